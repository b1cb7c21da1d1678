"""Online: a player registers, shares the map selected on the play page (the editor's, when that
leg ran) into a slot after its playability check, and logs out; a second player registers, finds
the first in the list of players who share maps, downloads the map into the tour "Downloads" and
plays it. Starts and ends on the main menu."""
import os
import subprocess
import time

from journeylib import BUTTON, PAGES, Failed

# The shared-maps page: the first row of its buttons, higher than the play page's, where only
# the main menu's column also has buttons.
PAGES["shared maps"] = lambda p: p.count(BUTTON, 120, 494, 400, 20) > 1500 and not PAGES["main menu"](p)
# The login page: its two rows of two buttons under the form (Log in, Register; Rules, Back).
PAGES["login"] = lambda p: p.count(BUTTON, 130, 360, 170, 14) > 1500 and p.count(BUTTON, 340, 398, 170, 14) > 1500

ONLINE_Y = 351  # the main menu's fourth button
FIRST, SECOND = ("ann", "annpw", "ann@example.org"), ("bob", "bobpw", "bob@example.org")


def type_text(j, text):
    j.require_alive()
    subprocess.run(["xdotool", "type", "--delay", "120", text], check=True)
    time.sleep(0.3)


def park_pointer(j):
    """The pointer off the buttons: a pointer over them takes the login page's focus."""
    j.click_page(630, 630, click=False)


def box_checked(p):
    """The registration page's box "I accept the rules" shows its green fill."""
    return sum(1 for y in range(314, 330) for x in range(84, 100) if (p.at(x, y) >> 8) & 0xFF > 160
               and p.at(x, y) >> 16 < 120) > 60


def register(j, who, shot):
    """From the main menu through the login page to the registration page, and an account made:
    the game goes on to the shared maps."""
    j.wait_page("main menu")
    j.click_page(320, ONLINE_Y)
    park_pointer(j)
    j.wait_page("login")
    time.sleep(0.5)
    j.click_page(424, 367)  # Register (the buttons keep their selection between visits)
    park_pointer(j)
    time.sleep(1.5)
    name, password, email = who
    # The page keeps what was typed on an earlier visit: to the first field, and each emptied.
    j.keys(*["Up"] * 6)
    for text in (name, password, email):
        j.keys(*["BackSpace"] * 24)
        type_text(j, text)
        j.keys("Down")
    if not box_checked(j.pixels()):
        j.keys("space")  # the box "I accept the rules"
    j.shot(shot)
    j.keys("Down", "Return", leads_to="shared maps", within=20)  # Register


def leg_share_a_map(j):
    register(j, FIRST, "online-01-registration")
    j.shot("online-02-players")
    j.keys("Down", "Return", settle=1.2)  # below the empty list: My shared maps
    j.shot("online-03-own-maps")
    j.keys("Up", "Return", settle=0.7)  # the empty list: choose a slot
    j.shot("online-04-slots")
    j.keys("Return", leads_to="notice")  # slot 1, and the question
    j.keys("Return")  # Yes: the check runs, then the upload
    j.wait_for(None, lambda: j.shows("notice"), 90)  # the answer (its picture tells which)
    j.shot("online-05-shared")
    j.keys("Return", leads_to="shared maps")
    time.sleep(1.0)
    j.shot("online-06-own-maps")
    j.keys("Escape", settle=1.2)  # the players
    j.keys("Down", "Right", "Right", "Return", leads_to="main menu")  # below the list: Log out


def leg_download_and_play(j):
    register(j, SECOND, "online-07-registration")
    time.sleep(1.0)
    j.shot("online-08-players")
    j.keys("Return", settle=2.2)  # the first player who shares maps
    j.shot("online-09-maps")
    j.keys("Return", settle=0.7)  # saved into Downloads
    j.shot("online-10-downloaded")
    maps = j.tour_maps("Downloads")
    if len(maps) != 1:
        raise Failed("the tour Downloads holds %r" % maps)
    info = j.map_info("Maps/Downloads/" + maps[0])
    if info.get("locked") == "1":
        raise Failed("the downloaded map is locked")
    shared = [folder for folder in os.listdir(j.game_file("Maps")) if folder != "Downloads"
              and os.path.isdir(j.game_file("Maps/" + folder)) for name in j.tour_maps(folder)
              if name and j.map_info("Maps/%s/%s" % (folder, name)).get("uid") == info.get("uid")]
    if not shared:
        raise Failed("the downloaded map (uid %s) is none of the player's maps" % info.get("uid"))
    j.keys("Escape", "Return", "Return", settle=2.2)  # back, the player again and the map again: still one copy
    j.keys("Return")
    if j.tour_maps("Downloads") != maps:
        raise Failed("a second download did not replace the first: %r" % j.tour_maps("Downloads"))
    j.keys("Return", settle=2.2)  # play it
    j.shot("online-11-race")
    if j.shows("shared maps"):
        raise Failed("the downloaded map did not start")
    for _ in range(6):  # out of the race through its menu (Leave race), then back to the main menu
        picture = j.pixels()
        if PAGES["main menu"](picture):
            break
        if PAGES["play"](picture) or PAGES["shared maps"](picture):
            j.keys("Escape", settle=1.0)
            continue
        j.keys("Escape", settle=0.6)  # the in-race menu
        j.keys("Down", "Return", settle=1.7)  # Leave race
    j.wait_page("main menu")
    if not os.path.exists(j.game_file("Maps/Downloads/" + maps[0])):
        raise Failed("the downloaded map is gone")


LEGS = [leg_share_a_map, leg_download_and_play]
