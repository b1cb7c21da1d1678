"""After the race: the tutorial's time kept under the offered name, back on the play page with the
next map open. Starts on the name entry, ends on the main menu."""
import time

from journeylib import PAGES


def leg_back_on_play_page(j):
    j.key("Return", pause=1.0)  # keep the time under the offered name
    j.shot("07-after-race")
    j.key("Escape")  # back to the play page
    j.wait_page("play")
    time.sleep(0.5)
    if PAGES["notice"](j.pixels()):  # the unlock notice
        j.shot("08-unlock-notice")
        j.key("Return")
    j.shot("09-play-page-unlocked")
    j.key("Escape")  # the main menu
    j.wait_page("main menu")


LEGS = [leg_back_on_play_page]
