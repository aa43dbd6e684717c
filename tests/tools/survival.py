# How a run of the program may end, whatever file it was given: by itself, in time, with a code and a word of its own.
import re

import measure

OWN_CODES = range(6)
STATUS = re.compile(r"error (-?\d+)")
STATUSES = {-1, *range(-4095, -4067)}
SANITIZER = re.compile(r"(Address|Leak|UndefinedBehavior)Sanitizer|runtime error:")
# A sanitizer's report ends the program with a code that is none of its own.
REPORTS = {"ASAN_OPTIONS": "exitcode=99", "UBSAN_OPTIONS": "exitcode=99:print_stacktrace=1"}


def run(zorvan, path, output, seconds, options=()):
    return measure.run([zorvan, *options, path, "-o", output], seconds, REPORTS)


def strange_statuses(text):
    return [status for status in STATUS.findall(text) if int(status) not in STATUSES]


def complaint(run, seconds, most_bytes):
    """What is wrong about how a run ended; an empty text when nothing is."""
    if run.timed_out:
        return f"not done after {seconds} seconds"
    if run.code not in OWN_CODES:
        return f"ended with {measure.name_of_signal(run.code) or run.code}: {run.output[-1500:]}"
    if SANITIZER.search(run.output):
        return run.output[:1500]
    if run.peak_bytes > most_bytes:
        return f"took {run.peak_bytes >> 20} MiB"
    if run.code and not run.output.startswith("zorvan: "):
        return f"ended with {run.code} and did not say why: {run.output[:1500]}"
    if strange_statuses(run.output):
        return f"told of a status that there is not: {run.output[:1500]}"
    return ""
