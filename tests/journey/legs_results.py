"""After the race: a name typed into the tutorial's top ten and found in its score file, back on
the play page with the next map open, another character chosen and found in profile.dat, and a
party of two racing the tutorial in Versus turn by turn to the party results. Starts on the name
entry, ends on the main menu."""
import os
import subprocess
import time

from journeylib import BUTTON, PAGES, Failed

NAME = "JOURNEY"
HEADING = 0xC8C4D8  # the results table's column headings
NEW_ROW = 0x00FF00  # the row just entered
BOX = 0x2E2B3A  # a character box
PANEL = 0x1C1A24  # the panel naming the next party player


def results_table(p):
    return p.count(HEADING, 30, 94, 60, 14) > 100


def party_results_title(p):  # the "P" of the title, wider than the other pages' titles
    return p.count(0xFFFFFF, 128, 22, 36, 30) > 200


# each recognised in a 640 x 640 window by what only it draws
PAGES["name entry"] = lambda p: p.count(0xFFFFFF, 175, 94, 290, 14) > 2500 and not PAGES["party"](p)
PAGES["highscores"] = lambda p: results_table(p) and not party_results_title(p)
PAGES["party results"] = lambda p: results_table(p) and party_results_title(p)
PAGES["character"] = lambda p: p.count(BOX, 140, 125, 360, 75) > 1500
PAGES["party"] = lambda p: p.count(BOX, 140, 295, 360, 75) > 1500  # the character boxes lower down
PAGES["waiting"] = lambda p: p.count(PANEL, 30, 245, 100, 15) > 1000


def score_header(j, relative):
    """The first line of a score file, deciphered: "u<map uid>@name:time;..."."""
    tool = os.path.join(os.path.dirname(j.game), "quillmaze-map")
    out = subprocess.run([tool, "decode", "--all", j.game_file(relative)], capture_output=True, text=True)
    if out.returncode != 0 or not out.stdout:
        raise Failed("cannot read %s: %s" % (relative, out.stderr.strip()))
    return out.stdout.splitlines()[0]


def tutorial_scores(j):
    return "Maps/FirstSteps/" + j.tour_maps("FirstSteps")[0].replace(".map", ".dat")


def point_page(j, px, py, click=False):
    """The pointer moved to a point of the 640 x 640 page and, when asked, the left button held
    there as long as a tap holds a key."""
    x, y, w, h = j.geometry()
    scale = min(w / 640.0, h / 640.0)
    at = [str(int(x + (w - 640 * scale) / 2 + px * scale)), str(int(y + (h - 640 * scale) / 2 + py * scale))]
    press = ["sleep", "0.1", "mousedown", "1", "sleep", "0.18", "mouseup", "1"] if click else []
    subprocess.run(["xdotool", "mousemove", *at, *press], check=True)
    time.sleep(0.25)


def tap(j, key):
    """A press held 0.18 s within one xdotool run: long enough for a slow frame to see it, and
    short of the name entry's key repeat (0.3 s), which a busy machine could stretch a press
    into when the key goes down and up in separate runs."""
    j.require_alive()
    subprocess.run(["xdotool", "keydown", key, "sleep", "0.18", "keyup", key], check=True)
    time.sleep(0.25)


def leg_name_entry(j):
    j.wait_page("name entry")
    j.shot("results-01-name-entry")
    for key in ["BackSpace"] * 10 + list(NAME.lower()):  # the offered name goes, ours comes
        tap(j, key)
    j.shot("results-02-name-typed")
    tap(j, "Return")
    j.wait_page("highscores", 5)
    shown = j.shot("results-03-highscores")
    if shown.count(NEW_ROW, 0, 121, 640, 24) < 500:
        raise Failed("the new time is not the first row in green")
    header = score_header(j, tutorial_scores(j))
    if "@%s:" % NAME not in header:
        raise Failed("the score file holds %r, not the typed name first" % header)


def leg_back_on_play_page(j):
    tap(j, "Escape")  # back to the play page
    j.wait_page("play")
    time.sleep(0.5)
    if PAGES["notice"](j.pixels()):  # the unlock notice
        j.shot("results-04-unlock-notice")
        tap(j, "Return")
    if j.second_map_locked():
        raise Failed("the second map is still locked")
    j.shot("results-05-play-page-unlocked")
    tap(j, "Escape")  # the main menu
    j.wait_page("main menu")


def leg_character(j):
    point_page(j, 320, 413, click=True)  # Character
    j.wait_page("character")
    tap(j, "Right")
    j.shot("results-06-character-chosen")
    tap(j, "Return")
    j.wait_page("main menu")
    with open(j.game_file("profile.dat"), "rb") as f:
        profile = f.read().strip()
    if profile != b"1":
        raise Failed("profile.dat holds %r, not the second character" % profile)


def race(j, finished, seconds=15):
    """The tutorial's route as the start's legs race it (Right held, jump tapped), the taps held
    within one xdotool run so that slow frames on a busy machine still see every jump. True once
    finished() says so."""
    j.keydown("Right")
    try:
        deadline = time.time() + seconds
        checked = time.time()
        while time.time() < deadline:
            j.require_alive()
            subprocess.run(["xdotool", "keydown", "Up", "sleep", "0.06", "keyup", "Up"], check=True)
            time.sleep(0.05)
            if time.time() - checked > 0.5:
                checked = time.time()
                if finished():
                    return True
    finally:
        j.keyup("Right")
    return finished()


def race_turn(j, player):
    j.wait_page("waiting")
    j.shot("results-%02d-waiting-player-%d" % (7 + 2 * player, player))
    tap(j, "space")
    over = lambda: PAGES["party results"](j.pixels())
    for _ in range(3):
        if race(j, over):
            break
        tap(j, "r")  # stuck: the turn starts over and waits for its player again
        time.sleep(1.0)
        if PAGES["waiting"](j.pixels()):
            tap(j, "space")
    j.wait_page("party results", 5)
    return j.shot("results-%02d-party-results-%d" % (8 + 2 * player, player))


def leg_party_versus(j):
    point_page(j, 320, 289, click=True)  # Party
    j.wait_page("party")
    for _ in range(5):
        tap(j, "Down")  # past both players, the characters, the game type and Add/Remove to Start
    j.shot("results-07-party")
    tap(j, "Return")
    j.wait_page("play")
    point_page(j, 300, 114)  # the tutorial, which both will race
    j.shot("results-08-party-map")
    tap(j, "Return")
    race_turn(j, 1)
    tap(j, "Return")  # Next player
    shown = race_turn(j, 2)
    if shown.count(NEW_ROW, 0, 121, 640, 64) < 500 or shown.count(BUTTON, 200, 588, 20, 14) > 100:
        raise Failed("the second run is not ranked in green, or Next player is still offered")
    tap(j, "Return")  # Main menu, the only button left
    j.wait_page("main menu")
    header = score_header(j, tutorial_scores(j))
    if "PLAYER 1:" not in header or "PLAYER 2:" not in header:
        raise Failed("the party's runs are not in the tutorial's top ten: %r" % header)


def leg_party_marathon(j):
    """A Marathon drawn and its first map waiting for the first player, then left from the wait with
    Escape, straight back to the party page: its random maps are not ones the held keys can finish."""
    point_page(j, 320, 289, click=True)  # Party
    j.wait_page("party")
    for key in ["Down"] * 3 + ["Right"] + ["Down"] * 4:  # to the game type, Marathon, on to Start
        tap(j, key)
    j.shot("results-13-party-marathon")
    tap(j, "Return")
    j.wait_page("waiting")
    j.shot("results-14-marathon-waiting")
    tap(j, "Escape")  # leaves the party at once, players and game type kept
    j.wait_page("party")
    j.shot("results-15-marathon-left")
    tap(j, "Escape")
    j.wait_page("main menu")
    x, y, w, h = j.geometry()
    j.mouse(x + w - 3, y + h - 3)  # the pointer back in the corner where the journey's focus click left it


LEGS = [leg_name_entry, leg_back_on_play_page, leg_character, leg_party_versus, leg_party_marathon]
