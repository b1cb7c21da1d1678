#!/usr/bin/env python3
"""Crash safety: uploads stream in while the service is killed with SIGKILL at random moments and
started again; every upload that was answered POSTMAP1 must be there afterwards, byte for byte.
Usage: crash_test.py BUILD_DIR  (QM_SERVER_TEST_DATABASE selects PostgreSQL)."""
import os
import random
import shutil
import sys
import tempfile
import threading
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import game_client as game  # noqa: E402
import server_process  # noqa: E402


def main():
    build = sys.argv[1]
    server = server_process.Server(server_process.binary_path(build), tempfile.mkdtemp(prefix="qm-crash-"),
                                   database=os.environ.get("QM_SERVER_TEST_DATABASE"))
    try:
        return run(server.start())
    finally:  # a failed check must not leave the service running
        if server.process and server.process.poll() is None:
            server.kill()
        shutil.rmtree(server.data, ignore_errors=True)


def run(server):
    rounds = 4  # 2 users a round; 10 registrations an hour per address
    tag = "%06x" % random.randrange(1 << 24)
    users = []
    for k in range(rounds * 2):
        user = game.register(server.port, "crash%s_%d" % (tag, k))
        assert user, "registration failed"
        users.append(user)

    acknowledged = {}  # (user id, slot) -> map bytes
    lock = threading.Lock()
    failures = []

    def uploader(user, stop):
        # Each slot once, so an acknowledged map is never replaced by a later one; twelve slots a
        # user keeps the whole run under the service's 120 uploads an hour from one address.
        for slot in range(1, 13):
            if stop.is_set():
                return
            data = server_process.plain_map("Crash %s %d" % (user[0], slot), int(user[0]) * 100 + slot, slot)
            try:
                answer = game.upload(server.port, user, slot, data, timeout=5)
            except (OSError, ValueError):
                return  # the service died under this request: unanswered, so no promise
            if answer == "POSTMAP1":
                with lock:
                    acknowledged[(user[0], slot)] = data
            else:
                failures.append("slot %d answered %s" % (slot, answer))

    for r in range(rounds):
        stop = threading.Event()
        threads = [threading.Thread(target=uploader, args=(users[2 * r + i], stop)) for i in range(2)]
        for t in threads:
            t.start()
        time.sleep(random.uniform(0.2, 0.8))
        server.kill()
        stop.set()
        for t in threads:
            t.join()
        server.start()
        for (uid, slot), data in list(acknowledged.items()):
            listing = game.form(server.port, "qcode=requestmaps&uid=" + uid)
            name = "Crash%s%d.map" % (uid, slot)
            if "%s:%d" % (name, slot) not in listing:
                failures.append("round %d: user %s slot %d missing from %s" % (r, uid, slot, listing))
                continue
            body = game.raw(server.port, ("GET /uploads/%s/%s HTTP/1.1\r\nHost: t\r\nConnection: close\r\n\r\n"
                                          % (uid, name)).encode())
            if body.split(b"\r\n\r\n", 1)[1] != data:
                failures.append("round %d: user %s slot %d differs" % (r, uid, slot))
    clean = server.stop()
    print("crash test: %d kills, %d acknowledged uploads checked, clean stop: %s" % (rounds, len(acknowledged), clean))
    for f in failures[:20]:
        print("FAIL:", f)
    return 0 if not failures and acknowledged and clean else 1


if __name__ == "__main__":
    sys.exit(main())
