# SPDX-License-Identifier: MIT
"""What a person does with the viewer. Every act begins with one empty or used viewer in 1x1 and ends so."""
import os

from walk_person import (Box, Failure, click, clipboard, drag, grab, key, main_windows, place, steady, tool, wait_for, wheel,
                         windows, write, xdotool)
from walk_viewer import BACKGROUND, EDGE

LEFT_TOP, RIGHT_BOTTOM = (80, 60), (200, 160)  # of the rectangle that is drawn on the card
SETTING = "GENERAL_PDF_RESOLUTION_X"
REACH = 40  # pixels of the screen around a shape: its name, its handles


def check(true, what):
    if not true:
        raise Failure(what)


def near(box, left_top, right_bottom, reach):
    """Whether a box of the screen spans two points, give and take."""
    ends = (box.x, box.y, box.x + box.width, box.y + box.height)
    return all(abs(a - b) <= reach for a, b in zip(ends, (*left_top, *right_bottom)))


def zoom(viewer):
    """By the wheel, about the mouse; and back to the whole by the menu."""
    box = viewer.open_card()
    before = viewer.look(viewer.box)
    wheel(*viewer.on_card(box, 160, 120), 5)
    after = viewer.checked_change("the wheel", before, viewer.box)
    check(after.box_of(BACKGROUND) is None, "the card does not fill the view after zooming in")
    wheel(*viewer.on_card(box, 160, 120), -12)
    viewer.rest()
    small = wait_for("a smaller card", lambda: (seen := viewer.card_box()).width < box.width and seen)
    check(abs(small.x + small.width / 2 - box.x - box.width / 2) < 4, "zooming did not keep the point below the mouse")
    key("alt+v", "w")
    viewer.wait_until_looks_like("fitting", before, viewer.box)


def zoom_by_keys(viewer):
    """100 %, a dragged box, and back to the whole."""
    box = viewer.open_card()
    before = viewer.look(viewer.box)
    key("1")
    small = wait_for("the card at 100 %", lambda: (seen := viewer.card_box()) and seen.width == 320 and seen)
    key("z")
    drag(viewer.on_card(small, 100, 80), viewer.on_card(small, 220, 170))
    wait_for("the part in the box", lambda: grab(viewer.box).box_of(EDGE) is None)
    check(viewer.look(viewer.box).box_of(BACKGROUND) is None, "the part in the box does not fill the view")
    key("ctrl+0")
    viewer.wait_until_looks_like("fitting", before, viewer.box)


def annotate(viewer):
    """A rectangle by the dock's button, moved, undone twice, redone; then a ruler."""
    box = viewer.open_card()
    bare = viewer.look(viewer.box)
    viewer.draw_rectangle(box, LEFT_TOP, RIGHT_BOTTOM)
    drawn = viewer.checked_change("the rectangle", bare, viewer.box)
    place_of = lambda picture: shifted(picture.box_of_change(bare), viewer.box)
    corners = viewer.on_card(box, *LEFT_TOP), viewer.on_card(box, *RIGHT_BOTTOM)
    check(near(place_of(drawn), *corners, REACH), "the rectangle is not where it was drawn")

    step = (60, 40)
    middle = viewer.on_card(box, 140, 110)
    drag(middle, (middle[0] + step[0], middle[1] + step[1]))
    moved = viewer.checked_change("moving", drawn, viewer.box)
    there = ((x + step[0], y + step[1]) for x, y in corners)
    check(near(place_of(moved), *there, REACH), "it is not where it was moved")
    key("ctrl+z")
    back = viewer.checked_change("the first undo", moved, viewer.box)
    check(near(place_of(back), *corners, REACH), "undo did not move it back")
    key("alt+e", "u")
    viewer.wait_until_looks_like("the second undo", bare, viewer.box)
    key("ctrl+shift+z")
    again = viewer.checked_change("redo", bare, viewer.box)
    check(near(place_of(again), *corners, REACH), "redo did not bring it back")

    viewer.log_after(lambda: key("ctrl+shift+r"), "Mode_Drawing_Line")
    drag(viewer.on_card(box, 30, 200), viewer.on_card(box, 290, 220))
    ruled = viewer.checked_change("the ruler", again, viewer.box)
    change = shifted(ruled.box_of_change(again), viewer.box)
    check(change.width > 0.7 * box.width, "the ruler is not as long as it was drawn")
    delete_by_context_menu(viewer, box, ruled)


def delete_by_context_menu(viewer, box, before):
    """The rectangle, below the mouse."""
    click(*viewer.on_card(box, 140, 110), button=3)
    viewer.log_after(lambda: key("Down", "Return"), r"DeleteObject\(")
    viewer.checked_change("deleting", before, viewer.box)
    key("ctrl+z")
    viewer.rest()


def shifted(box, by):
    return box and Box(box.x + by.x, box.y + by.y, box.width, box.height)


def sobel_in_a_rectangle(viewer):
    """By the tool's dialog and the mouse; undone in the viewer; all to the pixel in what is saved."""
    box = viewer.open_card()
    viewer.draw_rectangle(box, LEFT_TOP, RIGHT_BOTTOM)
    before = viewer.save()
    check(before == viewer.card, "the saved picture is not the one that was opened")
    viewer.tool("ctrl+e", "Sobel Filter", viewer.with_mouse)
    change = (filtered := viewer.save()).box_of_change(before)
    check(change and near(change, LEFT_TOP, RIGHT_BOTTOM, 3), f"the filter changed {change}, not the rectangle")
    key("ctrl+z")
    check(viewer.save() == before, "undo did not bring back the picture")
    key("ctrl+shift+z")
    check(viewer.save() == filtered, "redo did not bring back the filtered picture")


def median(viewer):
    """By the menu and the keyboard alone."""
    viewer.open_card()
    before = viewer.save()
    key("alt+t", "m")
    viewer.dialog("Median Filter")
    key("Escape")
    viewer.no_dialog("Median Filter")
    viewer.tool("ctrl+m", "Median Filter", viewer.with_keys)
    check(viewer.save() != before, "the median filter changed nothing")
    key("ctrl+z")
    check(viewer.save() == before, "undo did not bring back the picture")


def read_text(viewer):
    viewer.open(os.path.join(viewer.data, "ocr/udhr_eng_144dpi.png"))
    text = viewer.tool("ctrl+t", "OCR", viewer.with_mouse)[1]
    check("born free and equal in dignity" in text.replace("\\n", " "), f"the page was read as {text[:200]}")


def view_in_3d(viewer):
    viewer.open_card()
    flat = viewer.look(viewer.box)
    key("F3")
    relief = viewer.checked_change("the 3D view", flat, viewer.box)
    relief = wait_for("the relief", lambda: (seen := steady(viewer.box)) != flat and len(set(seen.data)) > 50 and seen)
    middle = viewer.box.x + viewer.box.width / 2, viewer.box.y + viewer.box.height / 2
    drag(middle, (middle[0] + 90, middle[1] + 40))
    viewer.checked_change("turning", relief, viewer.box)
    key("F2")
    viewer.wait_until_looks_like("the 2D view", flat, viewer.box)


def document(viewer):
    viewer.open(os.path.join(viewer.data, "pdf/11-pages.pdf"))
    first = viewer.look(viewer.box)
    viewer.log_after(lambda: key("ctrl+Next"), "Next Image At 1")
    second = viewer.checked_change("the next page", first, viewer.box)
    viewer.log_after(lambda: key("alt+v", "n"), "Next Image At 2")
    viewer.checked_change("the third page", second, viewer.box)
    viewer.log_after(lambda: key("ctrl+Prior"), "Previous Image At 1")
    viewer.wait_until_looks_like("going back", second, viewer.box)
    viewer.log_after(lambda: key("Next"), "Next Image At 2")
    viewer.log_after(lambda: key("Left"), "Previous Image At 1")
    viewer.wait_until_looks_like("the arrow key", second, viewer.box)


def four_viewers(viewer):
    """A second file goes where the person clicked; the first stays."""
    viewer.open_card()
    viewer.log_after(lambda: key("ctrl+4"), r"ChangeSize\(2, 2\)")
    areas = wait_for("empty viewers", lambda: len(found := empty_views()) >= 3 and found)
    target = max(areas, key=lambda box: (box.x, -box.y))
    click(target.x + target.width / 2, target.y + target.height / 2)
    viewer.open(viewer.card_path)
    wait_for("the picture in the viewer that was clicked", lambda: grab(target).box_of(EDGE))
    check(grab().box_of(EDGE).x < target.x - 100, "the picture in the first viewer is gone")
    viewer.drop("ctrl+shift+w")
    wait_for("an empty viewer", lambda: grab(target).box_of(EDGE) is None)
    viewer.log_after(lambda: key("ctrl+1"), r"ChangeSize\(1, 1\)")


def empty_views():
    return [box for box in grab().areas_of(BACKGROUND) if box.width > 150 and box.height > 150]


def capture(viewer):
    """A part of what another program shows, exactly as it is there: in the viewer and on the clipboard."""
    tool("display", "-window", "root", viewer.card_path)
    viewer.open_card()
    before = place(viewer.window)
    key("alt+t", "c")
    wait_for("the overlay", lambda: grab(Box(0, 0, 8, 8)).at(0, 0) == (63, 63, 63))
    wait_for("the keyboard at the overlay", lambda: xdotool("getactivewindow") != [viewer.window])
    region = Box(30, 20, 260, 190)
    viewer.log_after(lambda: drag((region.x, region.y), (region.x + region.width - 1, region.y + region.height - 1)),
                     "Push Image")
    wait_for("the main window", lambda: main_windows() and xdotool("getactivewindow") == [viewer.window])
    wanted = viewer.card.cut(region)
    check(viewer.save() == wanted, "the capture is not what was on the screen")
    check(wait_for("a picture on the clipboard", clipboard) == wanted, "the clipboard has something else")
    check(place(viewer.window) == before, "the window did not come back as it was")
    tool("display", "-size", "64x64", "-window", "root", "xc:black")  # what was beneath it is seen again
    viewer.measure()


def bad_files(viewer):
    """Broken, and missing: told in a bar, and nothing is lost."""
    viewer.open_card()
    before = viewer.look(viewer.box)
    lost = viewer.new_file("lost.bmp", viewer.card.bmp())
    viewer.open(lost)
    os.remove(lost)
    viewer.log_after(lambda: viewer.choose(os.path.join(viewer.data, "broken/bmp_badbitcount.bmp")), "Cannot load image")
    viewer.checked_change("the message", before, viewer.box)
    check(viewer.card_box(), "the picture is gone")
    viewer.log_after(lambda: viewer.drop("alt+f", "r", "1"), "Cannot load image .*lost.bmp")
    check(viewer.card_box(), "the picture is gone")
    viewer.close_messages()
    viewer.wait_until_looks_like("closing the message", before, viewer.box)


def set_resolution(viewer, number):
    key("alt+s", "p")
    click_resolution(viewer.dialog("Settings"))
    key("ctrl+a")
    write(number)
    wait_for("the setting on the disk", lambda: viewer.settings().get(SETTING) == number)
    close_settings(viewer)


def click_resolution(dialog):
    where = place(dialog)
    click(where.x + 47, where.y + 25)  # the first tab
    click(where.x + 125, where.y + 90)


def check_resolution(viewer, number):
    """The dialog shows it: one step up is one more."""
    key("ctrl+comma")
    click_resolution(viewer.dialog("Settings"))
    key("Up")
    wait_for("a setting counted up", lambda: viewer.settings().get(SETTING) == str(int(number) + 1))
    key("Down")
    wait_for("the setting back", lambda: viewer.settings().get(SETTING) == number)
    close_settings(viewer)


def close_settings(viewer):
    key("Escape")
    viewer.no_dialog("Settings")


def change_setting(viewer):
    set_resolution(viewer, "96")
    check_resolution(viewer, "96")


def go_dark(viewer):
    viewer.open_card()
    viewer.measure()
    key("alt+v", "a", "k")
    wait_for("a dark window", lambda: is_dark(viewer))
    where = viewer.look(place(viewer.window))
    bright = sum(1 for i in range(0, len(where.data), 3) if min(where.data[i : i + 3]) > 200)
    check(bright < 0.01 * len(where.data) / 3, f"{bright} pixels are bright in the dark")


def go_light(viewer):
    key("alt+v", "a", "l")
    wait_for("a light window", lambda: not is_dark(viewer))


def is_dark(viewer):
    """By a bare spot of the dock of the tools."""
    where = place(viewer.window)
    return sum(grab(Box(where.x + 60, where.y + 400, 1, 1)).at(0, 0)) < 300


def globe(viewer):
    key("alt+t", "g")
    found = viewer.dialog("Globe")
    where = place(found)
    seen = wait_for("the globe", lambda: len(set((look := steady(where)).data)) > 50 and look)
    middle = where.x + where.width / 2, where.y + where.height / 2
    aside = middle[0] + 60, middle[1] + 30
    drag(middle, aside)
    wait_for("a turned globe", lambda: grab(where) != seen)
    drag(aside, middle)  # it would soon be out of sight
    key("alt+F4")
    viewer.no_dialog("Globe")
