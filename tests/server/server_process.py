"""Starts and stops quillmaze-server for the scripted tests, and makes map files as the game's
parser reads them."""
import os
import random
import socket
import subprocess
import time


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


class Server:
    def __init__(self, binary, data, database=None, assets=None, log=None):
        """log: a file for the service's output (by default it is dropped, and shown if it fails
        to start)."""
        self.binary = binary
        self.data = data
        self.port = free_port()
        self.database = database
        self.assets = assets
        self.log = log
        self.process = None

    def start(self):
        args = [self.binary, "--listen", "127.0.0.1:%d" % self.port, "--data", self.data, "--quiet"]
        if self.database:
            args += ["--database", self.database]
        if self.assets:
            args += ["--assets", self.assets]
        self.process = subprocess.Popen(args, stdout=self.log or subprocess.DEVNULL,
                                        stderr=self.log or subprocess.PIPE)
        deadline = time.time() + 20
        while time.time() < deadline:
            if self.process.poll() is not None:
                raise RuntimeError("quillmaze-server ended at start with code %d: %s" % (
                    self.process.returncode, self.process.stderr.read().decode() if self.process.stderr else ""))
            try:
                socket.create_connection(("127.0.0.1", self.port), timeout=1).close()
                return self
            except OSError:
                time.sleep(0.05)
        raise RuntimeError("server did not start")

    def kill(self):
        self.process.kill()
        self.process.wait()

    def stop(self):
        """SIGTERM; True when the process ended by itself with status 0."""
        self.process.terminate()
        try:
            return self.process.wait(timeout=10) == 0
        except subprocess.TimeoutExpired:
            self.kill()
            return False


def plain_map(name, uid, seed=0, block_size=64):
    """A finishable map written without cipher (the parser reads plain lines as well)."""
    rng = random.Random(seed)
    cells = 20 if block_size == 32 else 10
    columns = []
    for x in range(20):
        column = [0] * 20
        if x < cells:
            column[cells - 1] = rng.randint(1, 5)
            if rng.random() < 0.3:
                column[rng.randint(2, cells - 3)] = rng.choice([1, 2, 3, 150, 160, 250, 251, 253])
        columns.append(column)
    columns[0][cells - 2] = 255
    columns[cells - 1][cells - 2] = 254
    lines = ["i%d" % block_size, "n" + name, "u%d" % uid, "l0", "e1", "t1"]
    lines += ["".join("%d," % v for v in column) for column in columns]
    return ("\r\n".join(lines) + "\r\n").encode()


def binary_path(build):
    return os.path.join(build, "quillmaze-server")
