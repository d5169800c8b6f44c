# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Another program's window, large and of one colour: what the user works in while Vantelo runs."""

COLOUR = (255, 0, 255)
TITLE = "Another window"


def main():
    import gi  # here, because who only wants to know the colour needs no toolkit
    gi.require_version("Gdk", "3.0")
    gi.require_version("Gtk", "3.0")
    from gi.repository import Gdk, Gtk

    window = Gtk.Window(title=TITLE, default_width=1000, default_height=700)
    style = Gtk.CssProvider()
    style.load_from_data(f"window {{ background: rgb{COLOUR}; }}".encode())
    Gtk.StyleContext.add_provider_for_screen(Gdk.Screen.get_default(), style, Gtk.STYLE_PROVIDER_PRIORITY_USER)
    window.show_all()
    Gtk.main()


if __name__ == "__main__":
    main()
