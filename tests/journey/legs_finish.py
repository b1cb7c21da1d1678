"""The journey's end: the options page (3D off, Dutch, applied and found in options.dat) and
quitting from the main menu. Starts on the main menu."""
import subprocess

from journeylib import Failed


def leg_options(j):
    j.wait_page("main menu")
    j.click_page(320, 475, leads_to="options")  # the Options button, with the mouse
    j.shot("10-options")
    j.keys("Down", "Down", "space")  # 3D graphics off
    j.keys("Down", "Down", "Down", "Left", "Return", "Down")  # the flags: Dutch; then to Apply
    j.shot("11-options-changed")
    j.keys("Return", leads_to="main menu")
    opts = j.options()
    if opts.get("Language") != "Dutch" or opts.get("3DGraphics") != "0":
        raise Failed("options.dat holds %r" % opts)
    j.shot("12-main-menu-dutch")


def leg_quit(j):
    j.keys("Escape", "Escape")  # to Quit, and out
    try:
        code = j.process.wait(10)
    except subprocess.TimeoutExpired:
        raise Failed("the game did not quit")
    if code != 0:
        raise Failed("the game quit with code %d" % code)


LEGS = [leg_options, leg_quit]
