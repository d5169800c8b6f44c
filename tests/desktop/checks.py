# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What has to hold on every desktop, in the order in which a user would notice."""

from account import DELIVERING, DESCRIPTIONS, ERROR_WORDS, FAILING, REFRESHED, ROWS, SETUP, STALE
from events import Failure, expect
from item import Item
from otherwindow import COLOUR
from otherwindow import TITLE as OTHER_WINDOW
from patience import watch
from picture import Rectangle
from vantelo_process import VanteloProcess

SETTINGS, GUIDE = "Vantelo Settings", "Setup Guide"
ADS_MANAGER, PORTAL = "https://adsmanager.facebook.com/", "https://developers.facebook.com/"


class Checks:
    """One desktop, one program, one account. Every check leaves the desktop as it found it."""

    def __init__(self, host, account, preferences, screen, program, pictures):
        self.host, self.account, self.preferences, self.screen = host, account, preferences, screen
        self.display, self.menu = host.display, host.menu(screen)
        self._binary, self._pictures = program, pictures
        self.dot = None

    # The program and its account

    def start(self, label):
        self.account.become(label, self.preferences)
        program = VanteloProcess(self._binary, self.host.session.environment)
        self.item = Item(self.host.session.bus, program.pid)
        watch(lambda: self.item.label() == label, lambda: f"the label {label!r}; it is {self.item.label()!r}")
        return program

    def refresh_to(self, label, by):
        self.account.become(label, self.preferences)
        by("🔄 Refresh")
        watch(lambda: self.item.label() == label, lambda: f"the label {label!r}; it is {self.item.label()!r}")

    # The checks: each gives what it has seen

    def started_before_the_panel_the_item_comes_with_it(self):
        self.host.start_panel()
        self._find_dot("🟢", "comes with the panel")
        self.dot = self._settled_dot()
        return f"a dot of {self.dot.width} pixels"

    def expect_item(self, label, patience):
        """The dot in its colour and the text, whichever came first, panel or program."""
        watch(lambda: self._look_for(label[0]), f"a dot that is {label[0]}", patience)
        self.dot = self._settled_dot(label[0])
        self.the_text_is_shown()
        if drawn := getattr(self.host, "drawn_text", None):
            watch(lambda: drawn() == label[2:], lambda: f"the text {label[2:]!r}; there is {drawn()!r}")

    def the_dot_has_its_colour(self, label):
        seen = self._find_dot(label[0], f"is {label[0]}", self.dot.width)
        self.dot = seen
        self._away()
        self._shoot(label)
        return f"at {seen.middle}"

    def the_text_is_shown(self):
        if self.host.text_beside:
            x = self.dot.x - 50 if self.host.text_beside == "left" else self.dot.x + self.dot.width + 2
            room = Rectangle(x, self.dot.y, 48, self.dot.height)
            colours = len(set(self._pixels(room)))
            if colours < 5:
                raise Failure(f"There is nothing written beside the dot: {colours} colours.")
            return "beside the dot"
        where = self._beyond_the_panel()
        before = self.display.grab(where)
        self.display.point(*self.dot.middle)
        watch(lambda: self.display.grab(where).difference(before), "the tooltip")
        self._settled(where)
        self._shoot("tooltip")
        self._away()
        return "in the tooltip"

    def a_screen_reader_reads_the_state(self, label):
        """As the sentence that the program offers, or at least as dot and text."""
        heard = []

        def reads():
            heard[:] = self.host.spoken(self.screen)
            return next((text for text in heard if DESCRIPTIONS[label] in text or label in text), None)

        seldom = {**self.host.cannot, **getattr(self.host, "at_times", {})}
        patience = 5 if "a_screen_reader_reads_the_state" in seldom else 30
        return repr(watch(reads, lambda: f"a screen reader to read the state; it reads {heard[:20]}", patience))

    def a_click_opens_the_menu(self, label):
        milliseconds = self.menu.open(self.dot)
        watch(lambda: self.menu.rows() == ROWS[label], lambda: f"the rows {ROWS[label]}; they are {self.menu.rows()}")
        self._settled(self._beyond_the_panel())
        self._shoot(f"{label} menu")
        if getattr(self.host, "program_draws_menu", False) and not self._look_for(label[0], self.dot.width):
            raise Failure("The menu covers the dot.")
        self.menu.close()
        self._away()
        return f"after {milliseconds:.0f} ms; {len(ROWS[label])} rows"

    def a_refresh_changes_the_open_menu_in_place(self):
        self.menu.open(self.dot)
        watch(lambda: self.menu.rows() == ROWS[DELIVERING], "the menu's rows")
        self._away()
        steady = self.menu.row_area("Quit Vantelo")
        settled = self._settled(steady)
        self.account.become(REFRESHED, self.preferences)
        self.item.choose("🔄 Refresh")
        looks = [0]

        def is_up_to_date():
            looks[0] += 1
            if self.display.grab(steady).pixels != settled:
                self._shoot("flicker")
                raise Failure("The open menu flickers while its texts change.")
            return self.menu.rows() == ROWS[REFRESHED]

        watch(is_up_to_date, lambda: f"the rows {ROWS[REFRESHED]}; they are {self.menu.rows()}")
        is_up_to_date()
        self._shoot("refreshed menu")
        self.menu.close()
        return f"nothing moved in {looks[0]} looks"

    def refresh_leads_to_the_error(self):
        self.refresh_to(FAILING, self._choose)
        return ERROR_WORDS

    def settings_open_in_front(self):
        return self._in_front_after(lambda: self._choose("Settings…"))

    def a_second_launch_brings_settings_to_the_front(self):
        def launch_again():
            VanteloProcess(self._binary, self.host.session.environment).expect_orderly_end("of a second launch", 10)

        return self._in_front_after(launch_again)

    def the_guides_link_opens_the_browser(self):
        watch(lambda: self._is_front(SETTINGS), "the focus back in Settings")
        self._tab_to(SETTINGS, "Setup Guide")
        self.display.key("space")
        watch(lambda: self._is_front(GUIDE), lambda: f"the focus in the guide; windows: {self._windows()}")
        self._tab_to(GUIDE, "developers.facebook.com")
        self.display.key("Return")
        watch(lambda: PORTAL in self.host.session.visited(), lambda: f"a visit; {self.host.session.visited()}")
        self._shoot("guide")
        for title in (GUIDE, SETTINGS):
            watch(lambda title=title: self._is_front(title), f"the focus in {title}")
            self.display.key("Escape")
            watch(lambda title=title: not self.screen.window(title), f"{title} to close")
        return PORTAL

    def both_windows_open(self):
        for row, title in (("Open Settings…", SETTINGS), ("Setup Guide…", GUIDE)):
            self.item.choose(row)
            watch(lambda title=title: self._is_front(title), f"the focus in {title}")
            screen = self.display.grab()
            self._settled(Rectangle(0, screen.height // 2, screen.width, screen.height // 2))  # no cursor blinks there
            self._shoot(title)
        self._expect_left_to_right()

    def ads_manager_opens_the_browser(self):
        self._choose("Open Ads Manager")
        watch(lambda: ADS_MANAGER in self.host.session.visited(), lambda: f"a visit; {self.host.session.visited()}")
        return ADS_MANAGER

    def a_new_panel_shows_the_item_again(self):
        self.host.kill_panel()
        watch(lambda: not self._look_for("🟢"), "the dot to go with the panel")
        self.host.start_panel()
        self._find_dot("🟢", "comes back")
        self.dot = self._settled_dot()
        return f"at {self.dot.middle}"

    def the_item_goes_with_the_program(self, label):
        """Panels that keep an item for a moment would show it beside the next program's."""
        watch(lambda: not self._look_for(label[0]), "the dot to go with the program")
        return "gone"

    def give_up(self, check):
        """After a failed check: whatever is open closes."""
        self._shoot(f"failure of {check}")
        for _ in range(3):
            self.display.dismiss()
        self._away()

    # What they are made of

    def _expect_left_to_right(self):
        """The texts are English, whatever the desktop speaks."""
        places = {node.name: node.extents.x for node in self.screen.window(SETTINGS).descendants()}
        if places["Test Connection"] > places["Setup Guide"]:
            raise Failure("English texts run from right to left.")

    def _in_front_after(self, deed):
        """Settings come up with the focus, over what the user worked in."""
        other = self.host.session.run(["/usr/bin/python3", str(self.host.folder / "otherwindow.py")])
        try:
            watch(lambda: self._is_front(OTHER_WINDOW), "another window")
            before = watch(self._count_other, "another window's pixels")
            deed()
            watch(lambda: self._is_front(SETTINGS), lambda: f"the focus in Settings; windows: {self._windows()}")
            covered = watch(lambda: before - self._count_other() > 100_000 and before - self._count_other(),
                            "Settings in front of the other window")
            self._shoot("settings")
            return f"focused, over {covered} pixels of another window"
        finally:
            other.kill()
            other.wait()

    def _find_dot(self, dot, what, size=None):
        near = size is not None

        def look():
            found = self._look_for(dot, size)
            return found if found and (not near or abs(found.y - self.dot.y) <= 3) else None

        return watch(look, f"a dot that {what}", seconds=180)

    def _look_for(self, dot, size=None):
        return self.display.grab().find_dot(dot, size, self.host.opacity)

    def _settled_dot(self, dot="🟢"):
        """Some panels move their items about until all have come."""
        seen = []

        def is_steady():
            seen.append(self._look_for(dot))
            return len(seen) > 10 and seen[-1] and len(set(seen[-10:])) == 1

        watch(is_steady, "the dot to come to rest", seconds=120)
        return seen[-1]

    def _choose(self, text):
        self.menu.open(self.dot)
        watch(lambda: text in self.menu.rows(), f"the row {text!r}")
        places = [None, self.menu.row_area(text)]

        def is_at_rest():
            places[:] = places[1], self.menu.row_area(text)
            return places[0] == places[1]

        watch(is_at_rest, "the menu to come to rest")
        self.menu.choose(text)
        self._away()

    def _beyond_the_panel(self):
        """Where a tooltip comes up: on the dot's inner side."""
        x, y = self.dot.middle
        screen = self.display.grab()
        left = max(0, min(x - 120, screen.width - 240))
        return Rectangle(left, y + 24 if y < screen.height / 2 else y - 72, 240, 48)

    def _settled(self, area):
        """The pixels, once the menu has come to rest: some fade in."""
        seen = []

        def is_steady():
            seen.append(self.display.grab(area).pixels)
            return len(seen) > 5 and len(set(seen[-5:])) == 1

        watch(is_steady, "the menu to come to rest")
        return seen[-1]

    def _pixels(self, area):
        pixels = self.display.grab(area).pixels
        return [pixels[i:i + 3] for i in range(0, len(pixels), 3)]

    def _count_other(self):
        return self.display.grab().count(bytes(COLOUR))

    def _is_front(self, title):
        window = self.screen.window(title)
        return window is not None and window.is_active

    def _windows(self):
        return [repr(window) for program in self.screen.programs() for window in program.children]

    def _tab_to(self, title, name):
        for _ in range(40):
            focused = watch(lambda: self._focused(title), f"a focus in {title}")
            if focused.name == name:
                return
            self.display.key("Tab")
            watch(lambda path=focused.path: (now := self._focused(title)) and now.path != path, f"Tab to leave {focused}")
        raise Failure(f"Tab does not reach {name!r} in {title}.")

    def _focused(self, title):
        window = self.screen.window(title)
        return window and next((node for node in window.descendants() if node.is_focused), None)

    def _away(self):
        self.display.point(*self.host.nowhere)

    def _shoot(self, name):
        self.display.grab().save(self._pictures / f"{name}.png")
