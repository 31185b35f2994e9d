# SPDX-License-Identifier: Apache-2.0
"""What documents say by the framework's reader: runs print_events."""

import subprocess


def parsed(document):
    return [tuple(event.split("\x1f")[:-1]) for event in document.split("\x1e")[:-1]]


def events_of(print_events, paths):
    """The events of each document. The last one is ("ok", errors), ("fatal", line, column, file, message) or
    ("contradiction",)."""
    run = subprocess.run([print_events], input="".join(path + "\n" for path in paths).encode(),
                         stdout=subprocess.PIPE)
    documents = run.stdout.decode().split("\x1d")[:-1]
    if len(documents) < len(paths):
        with open(paths[len(documents)], "rb") as file:
            raise AssertionError(f"print_events ended with status {run.returncode} in {file.read()}")
    assert run.returncode == 0, f"print_events ended with status {run.returncode}"
    return [parsed(document) for document in documents]
