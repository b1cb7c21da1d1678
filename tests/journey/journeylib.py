#!/usr/bin/env python3
"""What the journey's legs drive the game with: the Journey (the game process, its window, real X
key and mouse events through xdotool, pictures of the window through xwd, the files the game
leaves in its data folder, and a quillmaze-server of its own on loopback), and PAGES, how each
page is recognised on screen. A leg module may add its own pages to PAGES.
"""
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tests", "server"))
import server_process  # noqa: E402


class Failed(Exception):
    pass


def write_png(path, width, height, rows):
    """rows: a list of bytes objects of width * 3 RGB bytes each."""
    raw = b"".join(b"\x00" + row for row in rows)

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n")
        out.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)))
        out.write(chunk(b"IDAT", zlib.compress(raw, 6)))
        out.write(chunk(b"IEND", b""))


def xwd_to_rows(data, left, top, width, height):
    """The RGB rows of a rectangle of a 24/32-bit TrueColor XWD dump of the root window."""
    fields = struct.unpack(">25I", data[:100])
    header_size, bits_per_pixel, bytes_per_line, ncolors = fields[0], fields[11], fields[12], fields[19]
    byte_order, screen_width, screen_height = fields[7], fields[4], fields[5]
    if bits_per_pixel not in (24, 32):
        raise Failed("unexpected XWD pixel size %d" % bits_per_pixel)
    step = bits_per_pixel // 8
    offset = header_size + ncolors * 12
    left, top = max(0, left), max(0, top)
    width, height = min(width, screen_width - left), min(height, screen_height - top)
    rows = []
    for y in range(top, top + height):
        start = offset + y * bytes_per_line + left * step
        line = data[start:start + width * step]
        if byte_order == 0:  # least significant byte first: B G R (x)
            blue, green, red = line[0::step], line[1::step], line[2::step]
        else:
            red, green, blue = line[step - 3::step], line[step - 2::step], line[step - 1::step]
        row = bytearray(width * 3)
        row[0::3], row[1::3], row[2::3] = red, green, blue
        rows.append(bytes(row))
    return width, height, rows


class Picture:
    def __init__(self, width, height, rows):
        self.width, self.height, self.rows = width, height, rows

    def at(self, x, y):
        row = self.rows[y]
        return (row[3 * x] << 16) | (row[3 * x + 1] << 8) | row[3 * x + 2]

    def count_not(self, colour):
        return sum(1 for y in range(0, self.height, 8) for x in range(0, self.width, 8) if self.at(x, y) != colour)

    def count(self, colour, x0, y0, w, h):
        return sum(1 for y in range(y0, y0 + h) for x in range(x0, x0 + w) if self.at(x, y) == colour)


# How each page is recognised in a 640 x 640 window: by its buttons' plain fills where only that
# page has them.
BUTTON = 0x333333
PAGES = {
    # the main menu's wide buttons, left of their labels
    "main menu": lambda p: p.count(BUTTON, 128, 205, 62, 45) > 2000,
    # the play page's two rows of buttons at the foot, three across (above their labels)
    "play": lambda p: p.count(BUTTON, 230, 545, 180, 5) > 700 and p.count(BUTTON, 230, 583, 180, 5) > 700,
    # the options page's Apply, left of its label
    "options": lambda p: p.count(BUTTON, 160, 524, 40, 22) > 600,
    # the notice dialog's button in the middle of the window
    "notice": lambda p: p.count(BUTTON, 290, 250, 60, 250) > 400,
}


class Journey:
    def __init__(self, game, shots):
        self.game = os.path.abspath(game)
        self.shots = shots
        self.data = tempfile.mkdtemp(prefix="quillmaze-journey-")
        self.process = None
        self.window = None
        self.log = open(os.path.join(shots, "game.log"), "w")
        self.service = None
        self.service_url = None
        self.service_data = None

    # ---- the web service ----
    def start_service(self):
        """Our own quillmaze-server (beside the game) on a free loopback port with an empty
        database, its output in the game's log; the game is started pointing at it."""
        program = server_process.binary_path(os.path.dirname(self.game))
        if not os.path.exists(program):
            return
        self.service_data = tempfile.mkdtemp(prefix="quillmaze-journey-service-")
        self.service = server_process.Server(program, self.service_data, assets=os.path.join(ROOT, "Assets"),
                                             log=self.log)
        self.service.start()  # kept before it starts, so that a failed start is still stopped
        self.service_url = "http://127.0.0.1:%d" % self.service.port

    def stop_service(self):
        if self.service and self.service.process and self.service.process.poll() is None:
            self.service.stop()
        if self.service_data:
            shutil.rmtree(self.service_data, ignore_errors=True)

    # ---- the game ----
    def start(self, *arguments):
        env = dict(os.environ, QUILLMAZE_USER_DATA=self.data, SDL_AUDIODRIVER="dummy", QUILLMAZE_NO_DIALOGS="1")
        if self.service_url:
            arguments = ("--service", self.service_url) + tuple(arguments)
        self.process = subprocess.Popen([self.game, *arguments], cwd=ROOT, env=env, stdout=self.log,
                                        stderr=subprocess.STDOUT)
        deadline = time.time() + 20
        while time.time() < deadline:
            if self.process.poll() is not None:
                raise Failed("the game ended at start with code %d" % self.process.returncode)
            self.window = self.find_window()
            if self.window:
                time.sleep(0.5)
                self.focus()
                self.wait_for("the first frame", lambda: self.pixels().count_not(0x000000) > 1000, 30)
                return
            time.sleep(0.2)
        raise Failed("no game window appeared")

    def alive(self):
        return self.process is not None and self.process.poll() is None

    def require_alive(self):
        if not self.alive():
            raise Failed("the game ended unexpectedly (code %s)" % self.process.returncode)

    def stop(self):
        if self.alive():
            self.process.terminate()
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.process.kill()

    def game_file(self, relative):
        return os.path.join(self.data, "Quillmaze", relative)

    # ---- the window ----
    def find_window(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)],
                               capture_output=True, text=True).stdout.split()
        return found[-1] if found else None

    def geometry(self):
        for _ in range(40):
            out = subprocess.run(["xdotool", "getwindowgeometry", "--shell", self.window], capture_output=True,
                                 text=True).stdout
            values = dict(line.split("=", 1) for line in out.split() if "=" in line)
            if all(k in values for k in ("X", "Y", "WIDTH", "HEIGHT")):
                return int(values["X"]), int(values["Y"]), int(values["WIDTH"]), int(values["HEIGHT"])
            self.require_alive()
            time.sleep(0.1)
            self.window = self.find_window() or self.window  # the first window may be replaced
        raise Failed("the game window's place cannot be read")

    def focus(self):
        """Gives the window the keyboard: a click in its bottom right corner, where no page has
        anything to click (no window manager runs; the click may leave the intro)."""
        x, y, w, h = self.geometry()
        self.mouse(x + w - 3, y + h - 3, click=True)
        subprocess.run(["xdotool", "windowfocus", "--sync", self.window], capture_output=True)

    def mouse(self, x, y, click=False):
        """The pointer moved and, when asked, the left button held there within the same xdotool
        run, long enough for a slow frame on a busy machine to see it."""
        press = ["sleep", "0.1", "mousedown", "1", "sleep", "0.3", "mouseup", "1"] if click else []
        subprocess.run(["xdotool", "mousemove", str(x), str(y), *press], check=True)

    def page_point(self, px, py):
        """Where a point of the 640 x 640 page lies on the screen, wherever the window shows it."""
        x, y, w, h = self.geometry()
        scale = min(w / 640.0, h / 640.0)
        return int(x + (w - 640 * scale) / 2 + px * scale), int(y + (h - 640 * scale) / 2 + py * scale)

    def click_page(self, px, py, click=True, leads_to=None, within=15):
        """The pointer moved to a point of the page, and a click there unless told otherwise; then,
        given leads_to, the wait for that page."""
        self.mouse(*self.page_point(px, py), click)
        time.sleep(0.3)
        if leads_to:
            self.wait_page(leads_to, within)

    def keys(self, *names, hold=0.1, pause=0.22, settle=0.2, leads_to=None, within=15):
        """Presses in one xdotool run (a down and an up from separate runs could be far apart on a
        busy machine). The game counts a press from its event even when no frame saw the key down,
        so a tenth of a second down is enough, and it leaves a wide margin to the 0.3 s after which
        a held key repeats (a late up on a busy machine could reach it). Then, given leads_to, the
        wait for that page."""
        self.require_alive()
        command = ["xdotool"]
        for name in names:
            command += ["keydown", name, "sleep", str(hold), "keyup", name, "sleep", str(pause)]
        subprocess.run(command, check=True)
        time.sleep(settle)
        if leads_to:
            self.wait_page(leads_to, within)

    def keydown(self, name):
        subprocess.run(["xdotool", "keydown", name], check=True)

    def keyup(self, name):
        subprocess.run(["xdotool", "keyup", name], check=True)

    def race(self, finished, seconds):
        """The tutorial raced until finished() says so or the seconds pass; True once finished.
        Right held and jump tapped about every 100 ms: most phases of the taps touch the spring
        before the finish's platform (the next jump is a high one), the others jump over it and
        bounce at the platform's foot for as long as the taps go on. So halfway the racer lands,
        walks back onto the spring and jumps from there, whatever happened before."""
        deadline = time.time() + seconds
        if self.hop_right(finished, deadline - seconds / 2):
            return True
        time.sleep(1.5)  # longer than the highest jump: it has landed, and finished if it was going to
        if finished():
            return True
        self.keys("Left", hold=0.25, pause=0, settle=0)  # a quarter block to two back
        return self.hop_right(finished, deadline)

    def hop_right(self, finished, until):
        self.keydown("Right")
        try:
            checked = time.time()
            while time.time() < until:
                self.keys("Up", hold=0.06, pause=0.05, settle=0)
                if time.time() - checked > 0.5:
                    checked = time.time()
                    if finished():
                        return True
        finally:
            self.keyup("Right")
        return finished()

    def pixels(self):
        for _ in range(10):
            self.require_alive()
            dumped = subprocess.run(["xwd", "-root", "-silent"], capture_output=True)
            if dumped.returncode == 0:
                break
            time.sleep(0.2)  # the server was busy with the window; try again
        else:
            raise Failed("xwd cannot read the screen: " + dumped.stderr.decode(errors="replace").strip())
        dump = dumped.stdout
        x, y, w, h = self.geometry()
        return Picture(*xwd_to_rows(dump, x, y, w, h))

    def shot(self, name):
        """A picture of the game window as NAME.png in the shots folder."""
        time.sleep(0.3)
        picture = self.pixels()
        path = os.path.join(self.shots, name + ".png")
        write_png(path, picture.width, picture.height, picture.rows)
        return picture

    def shows(self, name):
        """Whether the window shows the page now (see PAGES)."""
        return PAGES[name](self.pixels())

    def wait_page(self, name, seconds=15):
        self.wait_for("the %s page" % name, lambda: self.shows(name), seconds)

    # ---- files ----
    def map_tool(self, *arguments):
        """The lines quillmaze-map (beside the game) prints for these arguments."""
        tool = os.path.join(os.path.dirname(self.game), "quillmaze-map")
        out = subprocess.run([tool, *arguments], capture_output=True, text=True)
        if out.returncode != 0 or not out.stdout:
            raise Failed("quillmaze-map %s: %s" % (" ".join(arguments), out.stderr.strip()))
        return out.stdout.splitlines()

    def map_info(self, relative):
        return dict(line.split(": ", 1) for line in self.map_tool("info", self.game_file(relative)) if ": " in line)

    def tour_maps(self, folder):
        """The map files of a tour of the game folder, in play order."""
        return self.map_tool("decode", self.game_file("Maps/%s/tour.dat" % folder))[-1].split(",")

    def second_map_locked(self):
        return self.map_info("Maps/FirstSteps/" + self.tour_maps("FirstSteps")[1]).get("locked") == "1"

    def options(self):
        path = self.game_file("options.dat")
        if not os.path.exists(path):
            raise Failed("options.dat was not written")
        with open(path, "rb") as f:
            lines = f.read().decode("latin-1").replace("\r\n", "\n").split("\n")
        keys = ["Language", "Fullscreen", "Music", "Username", "Password", "3DGraphics", "AnimatedMenuBackground",
                "AutoUpdates"]
        return dict(zip(keys, lines))

    def wait_for(self, what, check, seconds):
        """True once check() holds; when the seconds pass, fails naming WHAT, or without WHAT
        returns False."""
        deadline = time.time() + seconds
        while time.time() < deadline:
            self.require_alive()
            if check():
                return True
            time.sleep(0.2)
        if what:
            raise Failed("timed out waiting for " + what)
        return False
