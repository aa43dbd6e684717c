# Starts one command, waits for it and writes its exit code, processor seconds and peak memory to a file.
#
# This is a process of its own, and a small one, because the system counts what the starting process held at that
# moment into the peak of what it starts. Peaks below its own size, about 9 MiB, cannot be told.
import os
import sys

usage_file, command = sys.argv[1], sys.argv[2:]
_, status, usage = os.wait4(os.posix_spawnp(command[0], command, os.environ), 0)
code = os.waitstatus_to_exitcode(status)
with open(usage_file, "w", encoding="ascii") as file:
    print(code if code >= 0 else 128 - code, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024, file=file)
