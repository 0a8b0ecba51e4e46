#!/usr/bin/env python3
"""The management dialogs as a Linux screen reader meets them: through AT-SPI.

    atspi_walk.py <atspi_dialog_host>

Runs inside a D-Bus session of its own (it starts itself again under
dbus-run-session), with its own Xvfb (a free display number, -displayfd),
openbox and accessibility bus. For each dialog and language it starts the
host program on the xcb platform with Qt's accessibility bridge switched on,
finds the program among the applications on pyatspi's desktop, walks its
whole accessible tree and fails on every interactive control without a name;
it also looks for a few names the operator must hear (the close button, the
lists, the name field).

Exit status: 0 when every control is named, 1 on a failure, 77 (skipped)
when a tool it needs is not installed. Every wait has a time limit.
"""

import os
import select
import shutil
import signal
import subprocess
import sys
import time

SKIPPED = 77
BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
# The whole run, inside the D-Bus session.
RUN_LIMIT = 150
# One wait: a server, a bus name, a program's window.
WAIT_LIMIT = 20
# A tree deeper or larger than this is a loop, not a form.
MAXIMUM_DEPTH = 64
MAXIMUM_NODES = 20000

# Dialog, language, and names a screen reader must speak there:
# (role, name) pairs found somewhere in the dialog's tree.
CASES = [
    ("manager", "zh", [("push button", "关闭"), ("list", "已安装的打印机")]),
    ("manager", "en", [("push button", "Close"), ("list", "Installed printer")]),
    ("install", "zh", [("push button", "关闭"), ("list", "打印机列表")]),
    ("install", "en", [("push button", "Close"), ("list", "List of printers")]),
    ("rename", "zh", [("push button", "关闭"), ("text", "打印机名")]),
    ("rename", "en", [("push button", "Close"), ("text", "Printer Name")]),
    # Under AT-SPI a combo box is named by its current text and tied to its
    # label by a relation; the ink tabs are named by their inks.
    ("property", "zh", [("push button", "关闭"), ("text", "RGB 配置文件"), ("slider", "青色(C) 浓度"),
                        ("spin button", "品红(M) 最大墨量"), ("page tab", "Orange")]),
    ("property", "en", [("push button", "Close"), ("text", "RGB profile"), ("slider", "C density"),
                        ("spin button", "M maximum ink"), ("page tab", "Orange")]),
    ("question", "zh", [("push button", "是"), ("push button", "否")]),
    ("question", "en", [("push button", "Yes"), ("push button", "No")]),
]


def say(text):
    print(text, flush=True)


def missing_tools():
    missing = [tool for tool in ("dbus-run-session", "Xvfb", "openbox") if not shutil.which(tool)]
    if not os.access(BUS_LAUNCHER, os.X_OK):
        missing.append(BUS_LAUNCHER)
    try:
        import pyatspi  # noqa: F401  (only whether it is there)
    except ImportError:
        missing.append("pyatspi for " + sys.executable)
    return missing


def wait_until(what, condition, limit=WAIT_LIMIT, interval=0.1):
    deadline = time.monotonic() + limit
    while time.monotonic() < deadline:
        result = condition()
        if result:
            return result
        time.sleep(interval)
    raise TimeoutError("waited %d s for %s" % (limit, what))


def stop(process, limit=5):
    if process is None or process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(timeout=limit)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait(timeout=limit)


def start_display():
    """Starts Xvfb on a free display number and returns (process, ":N")."""
    read_end, write_end = os.pipe()
    # -noreset: the server would start afresh when its last client goes (a
    # host program, before openbox is there), which ends the accessibility
    # bus launcher, a client of the display too.
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset"],
        pass_fds=(write_end,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write_end)
    number = b""
    deadline = time.monotonic() + WAIT_LIMIT
    while not number.endswith(b"\n") and time.monotonic() < deadline:
        ready, _, _ = select.select([read_end], [], [], 0.5)
        if ready:
            chunk = os.read(read_end, 16)
            if not chunk:
                break
            number += chunk
    os.close(read_end)
    if not number.strip():
        stop(server)
        raise RuntimeError("Xvfb did not start")
    return server, ":" + number.decode().strip()


def bus_has_owner(name):
    probe = subprocess.run(
        ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
         "org.freedesktop.DBus.NameHasOwner", "string:" + name],
        capture_output=True, text=True, timeout=5)
    return probe.returncode == 0 and "boolean true" in probe.stdout


def find_application(desktop, pid):
    # The desktop's list of applications is cached, and kept up to date by
    # signals that arrive only while GLib's main loop runs: let them in, and
    # read the list afresh.
    from gi.repository import GLib
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)
    desktop.clear_cache()
    for index in range(desktop.childCount):
        application = desktop.getChildAtIndex(index)
        try:
            if application is not None and application.get_process_id() == pid:
                return application
        except Exception:  # an application that went away meanwhile
            continue
    return None


def describe_applications(desktop):
    names = []
    for index in range(desktop.childCount):
        application = desktop.getChildAtIndex(index)
        try:
            names.append("%s (pid %d, %d children)" % (application.name, application.get_process_id(),
                                                       application.childCount))
        except Exception as error:  # an application that went away meanwhile
            names.append("? (%s)" % error)
    return ", ".join(names) or "nothing"


def walk(accessible, interactive, path, depth, found, counter):
    """Appends (role name, name, path, showing) of every interactive node."""
    import pyatspi
    if accessible is None or depth > MAXIMUM_DEPTH or counter[0] > MAXIMUM_NODES:
        return
    counter[0] += 1
    role = accessible.getRole()
    name = accessible.name or ""
    step = "%s[%s]" % (accessible.getRoleName(), name)
    here = path + "/" + step if path else step
    if role in interactive:
        showing = accessible.getState().contains(pyatspi.STATE_SHOWING)
        found.append((accessible.getRoleName(), name, here, showing))
    for index in range(accessible.childCount):
        walk(accessible.getChildAtIndex(index), interactive, here, depth + 1, found, counter)


def check_dialog(host, display, kind, language, expected):
    """Returns the problems found in one dialog."""
    import pyatspi
    interactive = {
        pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_CHECK_BOX,
        pyatspi.ROLE_RADIO_BUTTON, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY,
        pyatspi.ROLE_PASSWORD_TEXT, pyatspi.ROLE_SLIDER, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_LIST,
        pyatspi.ROLE_LIST_BOX, pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_TREE_TABLE,
        pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_PAGE_TAB_LIST, pyatspi.ROLE_MENU_ITEM, pyatspi.ROLE_LINK,
    }
    label = "%s (%s)" % (kind, language)
    environment = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    environment.pop("QT_ACCESSIBILITY", None)
    program = subprocess.Popen([host, kind, language], cwd=os.path.dirname(host), env=environment,
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    try:
        # The host writes READY once the dialog is shown.
        ready, _, _ = select.select([program.stdout], [], [], WAIT_LIMIT)
        line = program.stdout.readline().decode(errors="replace").strip() if ready else ""
        if line != "READY":
            return ["%s: the host did not show the dialog (%s)" % (label, line or "no answer")]

        desktop = pyatspi.Registry.getDesktop(0)
        try:
            application = wait_until("%s on the accessibility bus" % label,
                                     lambda: find_application(desktop, program.pid))
            # The dialog's tree is there once its frame has children.
            wait_until("the controls of %s" % label,
                       lambda: application.childCount > 0 and application.getChildAtIndex(0).childCount > 0)
        except TimeoutError as error:
            return ["%s: %s; on the desktop: %s" % (label, error, describe_applications(desktop))]

        found = []
        walk(application, interactive, "", 0, found, [0])
        problems = []
        if len(found) < 4:
            problems.append("%s: only %d interactive controls reached" % (label, len(found)))
        for role, name, path, showing in found:
            # A screen reader presents what is showing: the message box's
            # check box, for one, stays hidden and without a text until a
            # question offers one.
            if not name and showing:
                problems.append("%s: no name: %s" % (label, path))
        for role, name in expected:
            if not any(found_role == role and found_name == name for found_role, found_name, _, _ in found):
                problems.append("%s: no %s named \"%s\"" % (label, role, name))
        say("%s: %d interactive controls, %d problem(s)" % (label, len(found), len(problems)))
        return problems
    finally:
        # Closing its input ends the host.
        try:
            program.stdin.close()
        except OSError:
            pass
        try:
            program.wait(timeout=10)
        except subprocess.TimeoutExpired:
            stop(program)


def run_inside_session(host):
    server = window_manager = launcher = None
    try:
        server, display = start_display()
        os.environ["DISPLAY"] = display
        window_manager = subprocess.Popen(["openbox", "--sm-disable"], stdout=subprocess.DEVNULL,
                                          stderr=subprocess.DEVNULL)
        # The accessibility bus, announced on the session bus and on the
        # display; its registry starts with it.
        launcher = subprocess.Popen([BUS_LAUNCHER, "--launch-immediately"], stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL)
        wait_until("the accessibility bus", lambda: bus_has_owner("org.a11y.Bus"))

        problems = []
        for kind, language, expected in CASES:
            problems += check_dialog(host, display, kind, language, expected)
        for problem in problems:
            say("FAIL: " + problem)
        return 1 if problems else 0
    except (RuntimeError, TimeoutError, subprocess.TimeoutExpired) as error:
        say("FAIL: %s" % error)
        return 1
    finally:
        stop(launcher)
        stop(window_manager)
        stop(server)


def main():
    if len(sys.argv) != 2 or not os.access(sys.argv[1], os.X_OK):
        say("usage: atspi_walk.py <atspi_dialog_host>")
        return 2
    host = os.path.abspath(sys.argv[1])
    if os.environ.get("BEX_ATSPI_SESSION") == "1":
        return run_inside_session(host)

    missing = missing_tools()
    if missing:
        say("SKIP: not installed: " + ", ".join(missing))
        return SKIPPED
    environment = dict(os.environ, BEX_ATSPI_SESSION="1")
    # A process group of its own: a run that overstays is ended with every
    # server it started.
    session = subprocess.Popen(["dbus-run-session", "--", sys.executable, os.path.abspath(__file__), host],
                               env=environment, start_new_session=True)
    try:
        return session.wait(timeout=RUN_LIMIT)
    except subprocess.TimeoutExpired:
        say("FAIL: the run took longer than %d s" % RUN_LIMIT)
        for signal_number in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(session.pid, signal_number)
                session.wait(timeout=5)
                break
            except (ProcessLookupError, subprocess.TimeoutExpired):
                continue
        return 1


if __name__ == "__main__":
    sys.exit(main())
