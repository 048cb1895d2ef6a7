# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""Rows of the table of promises, for benchmarks that are scripts."""


class Promises:
    """What was promised so far, and whether all of it is kept."""

    def __init__(self):
        self.kept = True

    def row(self, text, at_most, measured, unit, is_judged=True):
        """One promise, as the other benchmarks print theirs."""
        holds = measured <= at_most or not is_judged
        self.kept = self.kept and holds
        print(f"{text:<48} {at_most:>10.4g} {measured:>10.4g} {unit:<6}"
              f"{'' if holds else 'BROKEN'}", flush=True)
