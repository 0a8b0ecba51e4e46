#!/usr/bin/env python3
"""No function of the module's own sources is longer than the limit.

    function_length.py --build DIR --sources DIR [--clang-tidy PROGRAM]
                       [--max-lines N] [--jobs N]

Runs clang-tidy's readability-function-size check (LineThreshold N, 60 by
default) over every file of the build's compile_commands.json that lies
below the sources folder, several at a time, and reports the functions of
the headers below that folder that those files include as well, each once.
clang-tidy counts a function's lines from the line of its opening brace to
the line of its closing brace, blank lines and comments included; a lambda
counts as part of the function it is written in. A source
file or header of the folder that no compiled file reaches is checked on
its own, with the compile command clang-tidy derives from its neighbours.
What the build generates (moc, uic, rcc) lies in the build folder and is
not looked at.

Exit status: 0 when every function fits; 1 when one does not, or when
clang-tidy could not read a file (its messages are shown).
"""

import argparse
import concurrent.futures
import json
import os
import re
import subprocess
import sys

CHECK = "readability-function-size"
SOURCE_SUFFIXES = (".cpp", ".h")
# One file's run; a file of the module takes a few seconds.
FILE_LIMIT = 300

WARNING = re.compile(
    r"^(?P<file>.+?):(?P<line>\d+):(?P<column>\d+): warning: function '(?P<name>[^']+)' "
    r"exceeds recommended size/complexity thresholds \[" + CHECK + r"\]$")
LINES_NOTE = re.compile(
    r"^(?P<file>.+?):(?P<line>\d+):(?P<column>\d+): note: (?P<lines>\d+) lines including whitespace "
    r"and comments \(threshold \d+\)$")
# A line of the compiler's -H output: one dot a level, then the header.
INCLUDED = re.compile(r"^\.+ (?P<path>.+)$")
# The scope written before a function's name: "PrinterDriverPackageHelper::".
QUALIFIER = re.compile(r"((?:[A-Za-z_]\w*::)*)$")


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", required=True, help="build folder with compile_commands.json")
    parser.add_argument("--sources", required=True, help="folder whose functions are checked")
    parser.add_argument("--clang-tidy", default="clang-tidy", help="the clang-tidy program")
    parser.add_argument("--max-lines", type=int, default=60)
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    return parser.parse_args()


def below(path, folder):
    return os.path.commonpath([path, folder]) == folder


def own_files(folder):
    """Every source file and header below folder."""
    found = set()
    for directory, _, names in os.walk(folder):
        for name in names:
            if name.endswith(SOURCE_SUFFIXES):
                found.add(os.path.realpath(os.path.join(directory, name)))
    return found


def compiled_files(build, folder):
    """The files below folder that the build compiles."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as database:
        entries = json.load(database)
    found = set()
    for entry in entries:
        path = os.path.realpath(os.path.join(entry["directory"], entry["file"]))
        if below(path, folder):
            found.add(path)
    return found


def run_clang_tidy(arguments, folder, path):
    """clang-tidy's exit status, output and error output for one file."""
    config = ("{CheckOptions: [{key: %s.LineThreshold, value: %d}, "
              # Only the lines count: no limit on statements.
              "{key: %s.StatementThreshold, value: 4294967295}]}") % (CHECK, arguments.max_lines, CHECK)
    command = [
        arguments.clang_tidy, "-p", arguments.build, "--quiet", "--use-color=false",
        "--checks=-*," + CHECK, "--config=" + config,
        "--header-filter=^" + re.escape(folder + os.sep),
        # The headers the file reaches, for the list of files checked.
        "--extra-arg=-H",
        # Warnings that clang gives and the build's compiler does not must
        # not stop the file being read.
        "--extra-arg=-Wno-error",
        path,
    ]
    try:
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=FILE_LIMIT,
                             check=False, universal_newlines=True, errors="replace")
    except subprocess.TimeoutExpired:
        return -1, "", "clang-tidy did not finish within %d s" % FILE_LIMIT
    return run.returncode, run.stdout, run.stderr


def qualified_name(path, line, column, name):
    """name with the scope that the source writes before it, if any."""
    try:
        with open(path, encoding="utf-8", errors="replace") as source:
            text = source.read().splitlines()[line - 1]
    except (OSError, IndexError):
        return name
    return QUALIFIER.search(text[:column - 1]).group(1) + name


def long_functions(output):
    """(file, line, name, lines) for each function the check reported."""
    found = []
    pending = None
    for text in output.splitlines():
        warning = WARNING.match(text)
        if warning:
            pending = warning
            continue
        note = LINES_NOTE.match(text)
        if note and pending and note.group("file") == pending.group("file") \
                and note.group("line") == pending.group("line"):
            path = os.path.realpath(pending.group("file"))
            line = int(pending.group("line"))
            name = qualified_name(path, line, int(pending.group("column")), pending.group("name"))
            found.append((path, line, name, int(note.group("lines"))))
            pending = None
    return found


def reached_headers(errors, folder):
    reached = set()
    for text in errors.splitlines():
        included = INCLUDED.match(text)
        if included:
            path = os.path.realpath(included.group("path"))
            if below(path, folder):
                reached.add(path)
    return reached


def check(arguments, folder, paths, findings, failures):
    """Runs the check over paths; returns the headers below folder they reach."""
    reached = set()
    with concurrent.futures.ThreadPoolExecutor(max_workers=max(1, arguments.jobs)) as pool:
        runs = {pool.submit(run_clang_tidy, arguments, folder, path): path for path in sorted(paths)}
        for done in concurrent.futures.as_completed(runs):
            status, output, errors = done.result()
            if status != 0:
                failures.append((runs[done], output + errors))
                continue
            findings.update(long_functions(output))
            reached |= reached_headers(errors, folder)
    return reached


def main():
    arguments = parse_arguments()
    folder = os.path.realpath(arguments.sources)
    root = os.path.dirname(folder)
    if not os.path.isfile(os.path.join(arguments.build, "compile_commands.json")):
        print("no compile_commands.json in %s (CMAKE_EXPORT_COMPILE_COMMANDS)" % arguments.build)
        return 1
    compiled = compiled_files(arguments.build, folder)
    if not compiled:
        print("the build compiles no file below %s" % folder)
        return 1

    findings = set()
    failures = []
    reached = check(arguments, folder, compiled, findings, failures)
    alone = own_files(folder) - compiled - reached
    check(arguments, folder, alone, findings, failures)

    for path, output in sorted(failures):
        print("clang-tidy could not check %s:\n%s" % (os.path.relpath(path, root), output.strip()))
    for path, line, name, lines in sorted(findings):
        print("%s:%d: %s has %d lines, more than %d" % (os.path.relpath(path, root), line, name, lines,
                                                         arguments.max_lines))
    checked = len(compiled) + len(reached - compiled) + len(alone)
    print("%d files checked (%d compiled, %d headers reached, %d on their own); functions longer than %d "
          "lines: %d" % (checked, len(compiled), len(reached - compiled), len(alone), arguments.max_lines,
                         len(findings)))
    return 1 if findings or failures else 0


if __name__ == "__main__":
    sys.exit(main())
