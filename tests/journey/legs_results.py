"""After the race: a name typed into the tutorial's top ten and found in its score file, back on
the play page with the next map open, another character chosen and found in profile.dat, and a
party of two racing the tutorial in Versus turn by turn to the party results. Starts on the name
entry, ends on the main menu."""
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
    return j.map_tool("decode", "--all", j.game_file(relative))[0]


def tutorial_scores(j):
    return "Maps/FirstSteps/" + j.tour_maps("FirstSteps")[0].replace(".map", ".dat")


def leg_name_entry(j):
    j.wait_page("name entry")
    j.shot("results-01-name-entry")
    j.keys(*["BackSpace"] * 10, *NAME.lower())  # the offered name goes, ours comes
    j.shot("results-02-name-typed")
    j.keys("Return", leads_to="highscores", within=5)
    shown = j.shot("results-03-highscores")
    if shown.count(NEW_ROW, 0, 121, 640, 24) < 500:
        raise Failed("the new time is not the first row in green")
    header = score_header(j, tutorial_scores(j))
    if "@%s:" % NAME not in header:
        raise Failed("the score file holds %r, not the typed name first" % header)


def leg_back_on_play_page(j):
    j.keys("Escape", leads_to="play")  # back to the play page
    time.sleep(0.5)
    if j.shows("notice"):  # the unlock notice
        j.shot("results-04-unlock-notice")
        j.keys("Return")
    if j.second_map_locked():
        raise Failed("the second map is still locked")
    j.shot("results-05-play-page-unlocked")
    j.keys("Escape", leads_to="main menu")  # the main menu


def leg_character(j):
    j.click_page(320, 413, leads_to="character")  # Character
    j.keys("Right")
    j.shot("results-06-character-chosen")
    j.keys("Return", leads_to="main menu")
    with open(j.game_file("profile.dat"), "rb") as f:
        profile = f.read().strip()
    if profile != b"1":
        raise Failed("profile.dat holds %r, not the second character" % profile)


def race_turn(j, player):
    j.wait_page("waiting")
    j.shot("results-%02d-waiting-player-%d" % (7 + 2 * player, player))
    j.keys("space")
    over = lambda: j.shows("party results")
    for _ in range(3):
        if j.race(over, 16):
            break
        j.keys("r", settle=1.2)  # stuck: the turn starts over and waits for its player again
        if j.shows("waiting"):
            j.keys("space")
    j.wait_page("party results", 5)
    return j.shot("results-%02d-party-results-%d" % (8 + 2 * player, player))


def leg_party_versus(j):
    j.click_page(320, 289, leads_to="party")  # Party
    j.keys(*["Down"] * 5)  # past both players, the characters, the game type and Add/Remove to Start
    j.shot("results-07-party")
    j.keys("Return", leads_to="play")
    j.click_page(300, 114, click=False)  # the tutorial, which both will race
    j.shot("results-08-party-map")
    j.keys("Return")
    race_turn(j, 1)
    j.keys("Return")  # Next player
    shown = race_turn(j, 2)
    if shown.count(NEW_ROW, 0, 121, 640, 64) < 500 or shown.count(BUTTON, 200, 588, 20, 14) > 100:
        raise Failed("the second run is not ranked in green, or Next player is still offered")
    j.keys("Return", leads_to="main menu")  # Main menu, the only button left
    header = score_header(j, tutorial_scores(j))
    if "PLAYER 1:" not in header or "PLAYER 2:" not in header:
        raise Failed("the party's runs are not in the tutorial's top ten: %r" % header)


def leg_party_marathon(j):
    """A Marathon drawn and its first map waiting for the first player, then left from the wait with
    Escape, straight back to the party page: its random maps are not ones the held keys can finish."""
    j.click_page(320, 289, leads_to="party")  # Party
    j.keys(*["Down"] * 3, "Right", *["Down"] * 4)  # to the game type, Marathon, on to Start
    j.shot("results-13-party-marathon")
    j.keys("Return", leads_to="waiting")
    j.shot("results-14-marathon-waiting")
    j.keys("Escape", leads_to="party")  # leaves the party at once, players and game type kept
    j.shot("results-15-marathon-left")
    j.keys("Escape", leads_to="main menu")
    j.click_page(637, 637, click=False)  # the pointer back in the corner where the journey's focus click left it


LEGS = [leg_name_entry, leg_back_on_play_page, leg_character, leg_party_versus, leg_party_marathon]
