#!/usr/bin/env python3
"""Runs a command and writes its figures in the lines of a /usr/bin/time -v
report (user and system time, peak memory, wall time), with the processor
times to the microsecond: /usr/bin/time cuts them to hundredths, which
makes a run of a few hundredths of a second a ratio of two small integers.
Exits with the command's status. The peak memory is the kernel's, which
counts this script's own (some 10 MB, the size of the process the command
was started from) as well: meaningful for programs larger than that.

    cpu-time.py REPORT COMMAND [ARGUMENT...]
"""
import os
import subprocess
import sys
import time

if len(sys.argv) < 3:
    sys.exit(__doc__)
started = time.monotonic()
child = subprocess.Popen(sys.argv[2:])
_, status, usage = os.wait4(child.pid, 0)
wall = time.monotonic() - started
with open(sys.argv[1], "w") as report:
    report.write(f"\tUser time (seconds): {usage.ru_utime:.6f}\n")
    report.write(f"\tSystem time (seconds): {usage.ru_stime:.6f}\n")
    report.write(f"\tElapsed (wall clock) time (h:mm:ss or m:ss): {int(wall // 60)}:{wall % 60:09.6f}\n")
    report.write(f"\tMaximum resident set size (kbytes): {usage.ru_maxrss}\n")
code = os.waitstatus_to_exitcode(status)
sys.exit(code if code >= 0 else 128 - code)
