#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Reads both windows over the accessibility bus, as a screen reader does.

    dbus-run-session -- ScreenReaderTest.py <the program BothWindows>
"""

import os
import subprocess
import sys
import time
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PROGRAM = sys.argv.pop()
DEADLINE = 20.0  # seconds


def wait_for(what, condition):
    """The condition's first true value; meanwhile events are delivered."""
    end = time.monotonic() + DEADLINE
    context = GLib.MainContext.default()
    while time.monotonic() < end:
        while context.iteration(False):
            pass
        try:
            value = condition()
        except GLib.Error:  # the tree changed under our hands
            value = None
        if value:
            return value
        GLib.usleep(20_000)
    raise AssertionError("waited in vain for " + what)


def nodes(root):
    yield root
    for index in range(root.get_child_count()):
        child = root.get_child_at_index(index)
        if child:
            yield from nodes(child)


def find(root, role, name):
    for node in nodes(root):
        if node.get_role() == role and node.get_name() == name:
            return node
    return None


def text_of(node):
    """What the node's text interface gives away."""
    if "Text" not in node.get_interfaces():
        return ""
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))


def application():
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child and child.get_name() == "BothWindows":
            return child
    return None


class ScreenReaderTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        read, write = os.pipe()
        cls.display = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x1000x24", "-nolisten", "tcp"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        number = os.read(read, 16).decode().strip()
        os.environ.update(DISPLAY=":" + number)
        environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        cls.events = []
        cls.listener = Atspi.EventListener.new(cls.note)
        for kind in ("object:text-changed", "object:state-changed:showing", "object:property-change:accessible-value"):
            cls.listener.register(kind)
        cls.program = subprocess.Popen([PROGRAM], env=environment, stdout=subprocess.DEVNULL)
        cls.settings = cls.window("Vantelo Settings")
        cls.guide = cls.window("Setup Guide")

    @classmethod
    def tearDownClass(cls):
        for process in (cls.program, cls.display):
            process.terminate()
            process.wait()

    @classmethod
    def note(cls, event):
        source = event.source
        cls.events.append((event.type, source.get_role(), source.get_name(), str(event.any_data)))

    @staticmethod
    def window(name):
        return wait_for("the window " + name, lambda: (app := application()) and find(app, Atspi.Role.FRAME, name))

    @staticmethod
    def type(field, text):
        Atspi.Component.grab_focus(field)
        wait_for("the focus", lambda: field.get_state_set().contains(Atspi.StateType.FOCUSED))
        subprocess.run(["xdotool", "type", text], check=True)

    @staticmethod
    def press(button):
        names = [Atspi.Action.get_action_name(button, i) for i in range(Atspi.Action.get_n_actions(button))]
        Atspi.Action.do_action(button, names.index("Press"))

    def test_every_control_of_the_form_is_named(self):
        for role, name in (
                (Atspi.Role.HEADING, "Vantelo Settings"),
                (Atspi.Role.PASSWORD_TEXT, "Access Token"),
                (Atspi.Role.TEXT, "Ad Account ID"),
                (Atspi.Role.SPIN_BUTTON, "Stale threshold (minutes)"),
                (Atspi.Role.PUSH_BUTTON, "Decrease"),
                (Atspi.Role.PUSH_BUTTON, "Increase"),
                (Atspi.Role.PUSH_BUTTON, "Test Connection"),
                (Atspi.Role.PUSH_BUTTON, "Setup Guide"),
                (Atspi.Role.LABEL, "Refreshes every 10 minutes"),
        ):
            with self.subTest(name):
                self.assertIsNotNone(find(self.settings, role, name))

    def test_the_fields_tell_their_placeholders(self):
        for role, name, placeholder in (
                (Atspi.Role.PASSWORD_TEXT, "Access Token", "EAxxxxxxxxxx..."),
                (Atspi.Role.TEXT, "Ad Account ID", "act_123456789 or 123456789"),
        ):
            with self.subTest(name):
                self.assertEqual(find(self.settings, role, name).get_description(), placeholder)

    def test_the_threshold_has_its_value_and_range(self):
        stepper = find(self.settings, Atspi.Role.SPIN_BUTTON, "Stale threshold (minutes)")
        of = Atspi.Value
        numbers = (of.get_current_value(stepper), of.get_minimum_value(stepper), of.get_maximum_value(stepper))
        self.assertEqual(numbers, (15.0, 5.0, 60.0))

    def test_a_step_of_the_threshold_is_announced(self):
        announced = ("object:property-change:accessible-value", Atspi.Role.SPIN_BUTTON, "Stale threshold (minutes)")
        for count, name in enumerate(("Increase", "Decrease"), start=1):
            self.press(find(self.settings, Atspi.Role.PUSH_BUTTON, name))
            wait_for("the announcement", lambda: [e[:3] for e in self.events].count(announced) == count)

    def test_the_guide_has_headings_links_and_the_command(self):
        for number in range(1, 6):
            steps = [n.get_name() for n in nodes(self.guide)
                     if n.get_role() == Atspi.Role.HEADING and n.get_name().startswith("Step %d: " % number)]
            self.assertEqual(len(steps), 1)
        for name in ("developers.facebook.com", "Graph API Explorer", "adsmanager.facebook.com"):
            self.assertIsNotNone(find(self.guide, Atspi.Role.LINK, name))
        command = text_of(find(self.guide, Atspi.Role.TEXT, "Command"))
        self.assertEqual(len(command.split("\n")), 5)

    def test_the_parts_of_the_guide_are_apart(self):
        separators = [node for node in nodes(self.guide) if node.get_role() == Atspi.Role.SEPARATOR]
        self.assertEqual(len(separators), 4)

    def test_a_heading_is_read_once(self):
        headings = [n for window in (self.settings, self.guide) for n in nodes(window)
                    if n.get_role() == Atspi.Role.HEADING]
        self.assertGreater(len(headings), 6)
        self.assertEqual({node.get_description() for node in headings}, {""})

    def test_nothing_in_the_tree_tells_the_token(self):
        for node in nodes(self.settings):
            self.assertNotIn("EAtest", node.get_name() + node.get_description() + text_of(node))

    def test_typed_characters_of_the_token_are_not_announced(self):
        self.type(find(self.settings, Atspi.Role.PASSWORD_TEXT, "Access Token"), "secret")
        self.type(find(self.settings, Atspi.Role.TEXT, "Ad Account ID"), "42")
        inserted = lambda: [e for e in self.events if e[0].startswith("object:text-changed:insert")]
        wait_for("the other field's announcement", lambda: any("2" in e[3] for e in inserted()))
        self.assertEqual({e[2] for e in inserted()}, {"Ad Account ID"})

    def test_the_outcome_of_a_connection_test_is_announced(self):
        self.press(find(self.settings, Atspi.Role.PUSH_BUTTON, "Test Connection"))
        announced = ("object:state-changed:showing", Atspi.Role.NOTIFICATION, "Connected successfully!")
        wait_for("the announcement", lambda: any(e[:3] == announced for e in self.events))


if __name__ == "__main__":
    unittest.main(verbosity=2)
