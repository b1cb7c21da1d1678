#!/usr/bin/env python3
"""The player's journey: the built game driven end to end with real X key and mouse events.

Run under an X server (scripts/run-tests uses xvfb-run). The game starts with a fresh user data
folder and talks to a quillmaze-server of the journey's own; every leg drives it a little further,
checks what it left on disk and stores a picture of the window. The legs live in the legs_*.py
modules, run in the order of MODULES; each module starts where the one before it ends (the main
menu between modules). A leg fails by raising Failed (or any exception); the legs after a failed
one are reported as failed without running.

  journey.py --game build/quillmaze --shots DIR [--xml REPORT]
"""
import argparse
import os
import shutil
import sys
import tempfile
import time
from xml.sax.saxutils import quoteattr

import legs_editor
import legs_finish
import legs_online
import legs_results
import legs_start
from journeylib import ROOT, Journey

MODULES = [legs_start, legs_results, legs_editor, legs_online, legs_finish]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--game", default=os.path.join(ROOT, "build", "quillmaze"))
    parser.add_argument("--shots", default=None)
    parser.add_argument("--xml", default=None)
    args = parser.parse_args()
    shots = args.shots or tempfile.mkdtemp(prefix="quillmaze-journey-shots-")
    os.makedirs(shots, exist_ok=True)
    journey = Journey(args.game, shots)
    results = []
    legs = [leg for module in MODULES for leg in module.LEGS]
    broken = None
    try:
        journey.start_service()
    except Exception as error:  # the service's own start failure, or a missing program
        legs = []
        results.append(("service", 0.0, str(error)))
    for leg in legs:
        name = leg.__name__[4:]
        started = time.time()
        if broken is not None:
            results.append((name, 0.0, "not run: leg %s failed" % broken))
            continue
        try:
            leg(journey)
            results.append((name, time.time() - started, None))
            print("journey: %s passed" % name)
        except Exception as error:  # every failure is reported, whatever raised it
            results.append((name, time.time() - started, str(error) or type(error).__name__))
            print("journey: %s FAILED: %s" % (name, error))
            broken = name
            try:
                journey.shot("failed-" + name)
            except Exception:
                pass
    journey.stop()
    journey.stop_service()
    journey.log.close()
    shutil.rmtree(journey.data, ignore_errors=True)
    print("journey: pictures and the game's log in " + shots)
    if args.xml:
        failures = sum(1 for r in results if r[2])
        with open(args.xml, "w") as out:
            out.write('<?xml version="1.0" encoding="UTF-8"?>\n<testsuites tests="%d" failures="%d">\n'
                      '<testsuite name="Journey" tests="%d" failures="%d">\n' % ((len(results), failures) * 2))
            for name, seconds, failure in results:
                failed = "<failure message=%s/>" % quoteattr(failure) if failure else ""
                out.write('<testcase classname="Journey" name=%s time="%.2f">%s</testcase>\n'
                          % (quoteattr(name), seconds, failed))
            out.write("</testsuite>\n</testsuites>\n")
    return 1 if any(r[2] for r in results) else 0


if __name__ == "__main__":
    sys.exit(main())
