#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Where the access token goes while the program is used in every way: to the service and into its file.

    test_secrets.py path/to/vantelo
"""

import resource
import shutil
import signal
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import namespace
from browser import Browser
from desktop import Atspi, Desktop
from events import expect, poll_until, wait_until
from figures import delivering, failing, figure_rows, release
from scenario import ACCOUNT, CREDENTIALS, TOKEN, run, start_and_settle
from stage import ELSEWHERE, GRAPH, BusMonitor
from tls_service import Reply
from traces import FileAudit, expect_no_trace, open_to_others
from vantelo_process import VanteloProcess

PYTHONS_OWN = 1 << (signal.SIGPIPE - 1) | 1 << (signal.SIGXFSZ - 1)  # which it ignores by itself
CUT_SHORT = {"Content-Length": "999", "Connection": "close"}
CONNECTED = "Connected successfully!"
BUTTON, FIELD = Atspi.Role.PUSH_BUTTON, Atspi.Role.PASSWORD_TEXT


def the_token_stays_in_its_file_and_in_the_request(stage):
    """One long day with the program, from the first start to the end."""
    browser = Browser()
    temporary, log = namespace.private_folder("tmp"), namespace.private_folder("log") / "calls"
    shutil.rmtree(stage.home / ".config")
    with Desktop() as desktop:
        assistive = BusMonitor(stage.environment, desktop.bus_address())
        environment = {**desktop.environment, **browser.environment, "TMPDIR": str(temporary)}
        audited = ["sh", "-c", 'umask 0 && exec "$@"', "sh", "strace", "-o", str(log), *FileAudit.OPTIONS]
        with stage.start(under=audited, **environment) as program:
            follow_the_guide(stage, desktop, browser)
            enter_credentials(stage, desktop)
            try_to_copy_the_token(desktop)
            meet_every_failure(stage, desktop)
            open_pages(stage, desktop, browser)
            second = VanteloProcess(stage.binary, {**stage.environment, **environment})
            second.expect_orderly_end("of a second launch", within=10)
            for process in (program.pid, program.child()):
                for what in ("cmdline", "environ"):
                    expect_no_trace(TOKEN, Path(f"/proc/{process}/{what}").read_bytes(), f"the process's {what}")
            stage.panel.click("Quit Vantelo")
            program.expect_orderly_end("by Quit", within=10)
        assistive.stop()
    expect("Vantelo Settings".encode() in assistive.messages(), True, "Whether the accessibility bus was watched")
    expect_no_trace(TOKEN, assistive.messages(), "what went over the accessibility bus")
    expect_no_trace(TOKEN, browser.everything(), "what the browser was given")
    expect_private_files(stage, FileAudit(log).made(mask=0), [stage.home, temporary])
    keepers = [path for folder in (stage.home, temporary) for path in folder.rglob("*")
               if path.is_file() and TOKEN.encode() in path.read_bytes()]
    expect(keepers, [stage.preferences.path], "Files that hold the token")
    for folder in (stage.home, temporary):
        for path in folder.rglob("*"):
            if path.is_file() and path != stage.preferences.path:
                expect_no_trace(TOKEN, path.read_bytes(), str(path))
    told = {request.host for request in stage.journal if TOKEN in str(request)}
    expect(told, {GRAPH}, "Hosts that were told the token")


def follow_the_guide(stage, desktop, browser):
    stage.panel.click("Setup Guide…")
    for link, address in {
        "developers.facebook.com": "https://developers.facebook.com/",
        "Graph API Explorer": "https://developers.facebook.com/tools/explorer/",
        "adsmanager.facebook.com": "https://adsmanager.facebook.com/",
    }.items():
        browser.forget()
        desktop.press(Atspi.Role.LINK, link)
        browser.wait_for(address)


def enter_credentials(stage, desktop):
    stage.panel.click("Open Settings…")
    desktop.focus(FIELD, "Access Token")
    desktop.type(TOKEN)
    desktop.focus(Atspi.Role.TEXT, "Ad Account ID")
    desktop.type(ACCOUNT)
    poll_until(lambda: stage.preferences.holds(CREDENTIALS), "the credentials to be stored")
    desktop.press(BUTTON, "Test Connection")
    desktop.wait_for(Atspi.Role.NOTIFICATION, CONNECTED)


def try_to_copy_the_token(desktop):
    desktop.focus(Atspi.Role.TEXT, "Ad Account ID")
    desktop.keys("ctrl+a", "ctrl+c")
    poll_until(lambda: selections() == {"primary": ACCOUNT, "clipboard": ACCOUNT}, "a text that may be copied")
    desktop.focus(FIELD, "Access Token")
    desktop.keys("ctrl+a", "ctrl+c", "ctrl+x", "ctrl+Insert", "shift+Delete", "ctrl+a")
    desktop.focus(Atspi.Role.TEXT, "Ad Account ID")  # by now the keys have been handled
    expect_no_trace(TOKEN, str(selections()).encode(), "what can be pasted elsewhere")


def meet_every_failure(stage, desktop):
    trusted = stage.graph.context
    for what, answer in failures().items():
        stage.graph.answer, asked = answer, len(stage.journal)
        stage.graph.context = stage.stranger.server_context(GRAPH) if answer is None else trusted
        stage.graph.hang_up()
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_title("⚪ ERR")
        wait_until(lambda: "❌ API Error" in stage.panel.rows(), "the menu of an error")
        desktop.press(BUTTON, "Test Connection")
        desktop.wait_for_any(Atspi.Role.NOTIFICATION, but=CONNECTED)
        expect_no_trace(TOKEN, "\n".join(desktop.texts() + stage.panel.rows()).encode(), f"the windows: {what}")
        expect_no_trace(TOKEN, desktop.properties(), f"the windows' properties: {what}")
        expect(answer is None or len(stage.journal) > asked, True, f"Whether the service was asked: {what}")
        stage.graph.context, stage.graph.answer = trusted, delivering(impressions=12345)
        desktop.press(BUTTON, "Test Connection")
        desktop.wait_for(Atspi.Role.NOTIFICATION, CONNECTED)
        stage.panel.wait_for_rows(figure_rows())


def failures():
    quoting = f"Malformed access token {TOKEN}"
    return {
        **{f"status {status}": failing(quoting, status) for status in (200, 400, 401, 403, 407, 429, 500, 503)},
        "a page": lambda request: Reply(b"<html>" + request.target.encode(), 200),
        "a failing page": lambda request: Reply(b"<html>" + request.target.encode(), 502),
        "cut short": lambda request: Reply(b"{}", headers=CUT_SHORT, compressed=False),
        "not compressed at all": lambda request: Reply(b"{}", headers={"Content-Encoding": "gzip"}, compressed=False),
        "hung up": lambda request: 1 / 0,
        "a redirect to itself": lambda request: Reply(b"", 302, {"Location": request.target}),
        "a redirect elsewhere": lambda request: Reply(b"", 302, {"Location": f"https://{ELSEWHERE[0]}/"}),
        "a redirect without TLS": lambda request: Reply(b"", 302, {"Location": f"http://{GRAPH}{request.target}"}),
        "a stranger's certificate": None,
    }


def open_pages(stage, desktop, browser):
    browser.forget()
    stage.panel.click("Open Ads Manager")
    browser.wait_for("https://adsmanager.facebook.com/")
    stage.website.answer = lambda request: Reply(b"<html>")
    stage.panel.click("Check for Updates…")
    desktop.press(BUTTON, "OK")
    stage.website.answer = release("999.0")
    stage.panel.click("Check for Updates…")
    desktop.press(BUTTON, "Download Now")
    browser.wait_for("https://vantelo.example/download")


def the_browser_inherits_nothing_of_ours(stage):
    browser = Browser()
    for mask in ("022", "002"):
        browser.forget()
        under = ["sh", "-c", f'umask {mask} && exec "$@"', "sh"]
        with Desktop() as desktop, start_and_settle(stage, under, **desktop.screen, **browser.environment):
            stage.panel.click("Open Ads Manager")
            given = browser.wait_for("https://adsmanager.facebook.com/")
        expect(int(given["umask"], 8), int(mask, 8), "The browser's file creation mask")
        expect(sorted(int(number) for number in given["files"] if not given["files"][number].startswith("/proc")),
               [0, 1, 2], f"The browser's open files {given['files']}")
        ignored, blocked = given["signals"]
        expect([ignored & ~PYTHONS_OWN, blocked], [0, 0], "Signals that the browser ignores, blocks")


def a_crash_tells_nothing(stage):
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    for number in (signal.SIGSEGV, signal.SIGABRT):
        program = start_and_settle(stage)
        program.send(number)
        wait_until(lambda: program.ended, "the end of the program")
        expect_no_trace(TOKEN, program.output.encode(), "what a crash writes")


def qts_own_logs_tell_nothing(stage):
    with start_and_settle(stage, QT_LOGGING_RULES="*=true"):
        pass


def nothing_else_has_told_it(stage):
    stage.monitor.stop()
    expect("🟢 12,345".encode() in stage.monitor.messages(), True, "Whether the bus was watched")
    expect_no_trace(TOKEN, stage.monitor.messages(), "what went over the session bus")
    for program in VanteloProcess.runs:
        expect_no_trace(TOKEN, program.output.encode(), "what the program wrote")


def selections():
    """What other programs can paste."""
    return {name: subprocess.run(["xclip", "-o", "-selection", name], capture_output=True, text=True).stdout
            for name in ("primary", "clipboard")}


def expect_private_files(stage, made, folders):
    """Nothing that the program made was ever open to others, and it made nothing elsewhere."""
    ours = [(path, mode) for path, mode in made if not path.startswith(("/dev/", "/proc/"))]
    expect([path for path, _ in ours if not path.startswith(tuple(map(str, folders)))], [], "Files made elsewhere")
    expect([(path, oct(mode)) for path, mode in ours if open_to_others(mode)], [], "Files open to others")
    folder = stage.preferences.path.parent
    for path in (folder.parent, folder, *(Path(f"{stage.preferences.path}{end}") for end in (".new", ".lock"))):
        expect(str(path) in dict(ours), True, f"Whether {path} was seen being made")


STEPS = [
    the_token_stays_in_its_file_and_in_the_request,
    the_browser_inherits_nothing_of_ours,
    a_crash_tells_nothing,
    qts_own_logs_tell_nothing,
    nothing_else_has_told_it,
]


sys.exit(run(STEPS))
