"""The map editor: a tour and a map of the player's own made on the management page, the map drawn
in the editor with keys and the mouse, a mistake undone, a question declined, the map checked,
saved and played to the finish, and back. Starts and ends on the main menu, with the new map
selected on the play page."""
import os
import subprocess
import time

import legs_results  # noqa: F401 (its pages: the name entry and the highscores after a race)
from journeylib import BUTTON, PAGES, Failed

START, FINISH = 255, 254  # block ids in the map file
CHECK_GREEN = 0x1ADE0C  # the toolbar's check button
UNDO_BLUE = 0x1678D6  # the toolbar's undo and redo buttons
PAGES["editor"] = lambda p: p.count(CHECK_GREEN, 414, 6, 32, 28) > 500 and p.count(UNDO_BLUE, 344, 6, 66, 28) > 500
# the notice dialog's two buttons side by side below the middle
PAGES["question"] = lambda p: p.count(BUTTON, 200, 300, 240, 120) > 2000

TOOLBAR_Y = 20
CHECK_X, PLAY_X, CLEAR_X, SAVE_X = 428, 54, 258, 20  # toolbar buttons
PALETTE_X = 624  # the palette's rightmost column; its entries from y = 64, 32 apart


def palette_y(index):
    return 64 + 32 * index + 16


def cell_point(column, row):
    """The middle of a cell of the small map as the editor's 3D view shows it from above."""
    return 20 + 60 * column + 30, 20 + 60 * row + 30


def point_at(j, column, row):
    """The pointer over a cell: the cursor follows it through the picking image."""
    j.click_page(*cell_point(column, row), click=False)
    time.sleep(0.2)


def palette_open(j):
    return j.pixels().count(0xFFFFFF, 568, 42, 70, 16) > 50  # its heading


def retry(what, attempts, act, done):
    """A busy machine may drop a short key press or click: act again until done() holds."""
    for _ in range(attempts):
        act()
        if done():
            return
    raise Failed(what)


def choose_block(j, index):
    """A block chosen in the palette: Tab opens it, a click on the entry chooses and closes it."""
    if not palette_open(j):
        retry("the palette did not open", 4, lambda: j.keys("Tab"), lambda: palette_open(j))
    retry("the palette did not take the click", 4, lambda: j.click_page(PALETTE_X, palette_y(index)),
          lambda: not palette_open(j))


def drag(j, points):
    """The left button held from the first point of the page over the others."""
    j.click_page(*points[0], click=False)
    subprocess.run(["xdotool", "mousedown", "1"], check=True)
    for point in points[1:]:
        time.sleep(0.25)
        j.mouse(*j.page_point(*point))
    subprocess.run(["xdotool", "mouseup", "1"], check=True)
    time.sleep(0.3)


def game_log(j):
    with open(os.path.join(j.shots, "game.log"), errors="replace") as log:
        return log.read()


def tour_folders(j):
    root = j.game_file("Maps")
    return {name for name in os.listdir(root) if os.path.exists(os.path.join(root, name, "tour.dat"))}


def maps_of(j, folder):
    try:
        return [name for name in j.tour_maps(folder) if name]
    except Failed:
        return []


def on_page(j, name):
    return lambda: j.shows(name)


def leg_editor_new_map(j):
    retry("Play did not open the play page", 3, lambda: j.click_page(320, 165) or time.sleep(1.0), on_page(j, "play"))
    before = tour_folders(j)
    retry("Manage did not open", 3, lambda: j.click_page(320, 593), lambda: not j.shows("play"))
    retry("Add tour made no tour", 3, lambda: j.click_page(188, 419), lambda: len(tour_folders(j)) > len(before))
    made = sorted(tour_folders(j) - before)
    if len(made) != 1:
        raise Failed("Add tour made %d tour folders" % len(made))
    j.editor_tour = made[0]
    retry("Add map made no map", 3, lambda: j.click_page(258, 457), lambda: len(maps_of(j, j.editor_tour)) == 1)
    j.editor_map = maps_of(j, j.editor_tour)[0]
    j.shot("editor-01-new-tour")
    retry("Back did not lead to the play page", 3, lambda: j.click_page(430, 533), on_page(j, "play"))
    j.click_page(100, 98 + 36 * len(before) + 18)  # the new tour, last in the list
    retry("Edit did not open the editor", 3, lambda: j.click_page(524, 554) or time.sleep(1.0), on_page(j, "editor"))
    j.shot("editor-02-opened")


def map_cells(j):
    """The saved map: its info and its grid's rows."""
    relative = "Maps/%s/%s" % (j.editor_tour, j.editor_map)
    rows = [line.rstrip(",").split(",") for line in j.map_tool("decode", j.game_file(relative)) if line[:1].isdigit()]
    return j.map_info(relative), rows


def cell(j, column, row):
    """A cell of the map as last saved."""
    return int(map_cells(j)[1][column][row])


def saved_as(j, column, row, check):
    """Saves with the toolbar and waits a moment for the file's cell to pass check."""
    j.click_page(SAVE_X, TOOLBAR_Y)
    return j.wait_for(None, lambda: check(cell(j, column, row)), 4)


def leg_editor_paint(j):
    # The Start in the bottom-left corner, painted with Return where the pointer is.
    choose_block(j, 1)
    point_at(j, 0, 9)
    retry("Return did not paint the Start", 3, lambda: j.keys("Return"),
          lambda: saved_as(j, 0, 9, lambda id: id == START))
    # The Finish: the pointer three cells right, the cursor one more with the arrow key.
    choose_block(j, 2)
    point_at(j, 3, 9)
    j.keys("Right")
    retry("no Finish where the arrow key moved the cursor", 3, lambda: j.keys("Return"),
          lambda: saved_as(j, 4, 9, lambda id: id == FINISH))
    # A mistake (a block between the Start and the Finish), undone with Ctrl+Z: the map comes back
    # as it was saved.
    choose_block(j, 11)  # the first ordinary block
    point_at(j, 2, 9)
    retry("Return did not paint the block", 3, lambda: j.keys("Return"), lambda: saved_as(j, 2, 9, lambda id: id != 0))
    retry("Ctrl+Z did not undo the block", 3, lambda: j.keys("ctrl+z"), lambda: saved_as(j, 2, 9, lambda id: id == 0))
    # A ledge dragged with the left button across the middle row.
    drag(j, [cell_point(column, 5) for column in range(2, 8)])
    j.shot("editor-03-painted")
    # Clearing asks through the notice dialog; Escape declines and the map stays.
    retry("Clear did not ask", 3, lambda: j.click_page(CLEAR_X, TOOLBAR_Y) or time.sleep(1.0), on_page(j, "question"))
    j.shot("editor-04-question")
    retry("Escape did not close the question", 3, lambda: j.keys("Escape") or time.sleep(0.5),
          lambda: not j.shows("question"))
    if not saved_as(j, 0, 9, lambda id: id == START):
        raise Failed("declining Clear cleared the map")


def leg_editor_check(j):
    retry("the check did not answer", 3, lambda: j.click_page(CHECK_X, TOOLBAR_Y),
          lambda: j.wait_for(None, lambda: "Playability check of" in game_log(j), 20))
    if ": finishable" not in game_log(j):
        raise Failed("the check did not find a route: " + game_log(j).split("Playability check of")[-1][:80])
    time.sleep(0.5)
    j.shot("editor-05-checked")


def leg_editor_save_and_play(j):
    retry("save and play did not start the race", 3, lambda: j.click_page(PLAY_X, TOOLBAR_Y) or time.sleep(1.0),
          lambda: not j.shows("editor"))
    info, rows = map_cells(j)
    if info.get("start") != "0,9" or info.get("finish") != "4,9":
        raise Failed("the saved map's Start and Finish: %s and %s" % (info.get("start"), info.get("finish")))
    ledge = sum(1 for column in range(10) if rows[column][5] not in ("0",))
    if ledge < 4 or rows[2][9] != "0":
        raise Failed("the saved map has %d cells of the ledge and %s where the mistake was" % (ledge, rows[2][9]))
    j.shot("editor-06-race")
    j.keydown("Right")
    try:
        j.wait_page("name entry", 20)
    finally:
        j.keyup("Right")
    j.shot("editor-07-finished")
    j.keys("Return", leads_to="highscores", within=10)  # the offered name
    j.keys("Escape", leads_to="editor")  # a test run goes back to the editor
    j.shot("editor-08-after-the-race")


def leg_editor_back(j):
    j.keys("Escape")  # the command menu
    retry("the command menu's last entry did not leave the editor", 3, lambda: j.click_page(298, 310),
          on_page(j, "play"))
    j.shot("editor-09-play-page")
    retry("Back did not lead to the main menu", 3, lambda: j.keys("Escape"), on_page(j, "main menu"))


LEGS = [leg_editor_new_map, leg_editor_paint, leg_editor_check, leg_editor_save_and_play, leg_editor_back]
