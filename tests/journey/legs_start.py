"""The journey's start: the intro, the main menu, the play page and the tutorial raced to the
finish. Ends on the name entry of the tutorial's top ten."""
import time

from journeylib import Failed


def leg_intro(j):
    j.start()
    j.shot("01-intro")
    try:  # the focusing click may have left the intro already
        j.wait_page("main menu", 12)
    except Failed:
        j.keys("Return")


def leg_main_menu(j):
    j.wait_page("main menu")
    j.shot("02-main-menu")
    j.keys("Return")  # the first button: Play


def leg_play_page(j):
    j.wait_page("play")
    j.shot("03-play-page")
    j.keys("Right")  # the maps of the first tour
    j.shot("04-play-page-maps")
    if not j.second_map_locked():
        raise Failed("the second map is unlocked before the tutorial was finished")


def leg_tutorial(j):
    j.keys("Return", settle=0.5)  # start the selected first map
    j.shot("05-race")
    unlocked = lambda: not j.second_map_locked()
    for attempt in range(3):
        if j.race(unlocked, 16):
            break
        j.keys("r")  # start over
    j.wait_for("the next map to unlock", unlocked, 5)
    time.sleep(1.5)
    j.shot("06-finished")


LEGS = [leg_intro, leg_main_menu, leg_play_page, leg_tutorial]
