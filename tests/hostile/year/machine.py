# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""When polls come, said once more: the machine's time passes, asleep and awake. All times are in milliseconds."""

POLL_INTERVAL = 600_000
PATIENCE = 60_000  # with a network that does not come back after a sleep
MOMENT = 100  # what is shorter counts neither as a sleep nor as a delay


class PollClock:
    def __init__(self):
        self.online = True
        self.restart()

    def restart(self):
        """The program has been started."""
        self.due_in = POLL_INTERVAL  # or, while a poll waits for the network, what is left of its patience
        self.waiting = False

    def tick(self):
        """Time passes until the next poll comes; how much."""
        passed = self.due_in
        self._begin_anew(late=0)
        return passed

    def stay_awake(self, time):
        """Whether a poll comes at the end."""
        self.due_in -= time
        if self.due_in == 0:
            self._begin_anew(late=0)
            return True
        assert self.due_in > 0, "more than one thing would happen"
        return False

    def sleep(self, time):
        """Whether a poll comes at waking, once however many were missed."""
        self.due_in -= time
        late = -self.due_in
        if late < 0:
            return False
        if late >= MOMENT and not self.online:
            self.waiting, self.due_in = True, PATIENCE
            return False
        self._begin_anew(late)
        return True

    def come_online(self):
        """Whether a poll has waited for it."""
        self.online, waited = True, self.waiting
        if waited:
            self._begin_anew(late=0)
        return waited

    def _begin_anew(self, late):
        on_time = late < MOMENT and not self.waiting
        self.due_in = POLL_INTERVAL - (late if on_time else 0)
        self.waiting = False
