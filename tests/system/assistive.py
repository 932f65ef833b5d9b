#!/usr/bin/python3
"""Works Kalvo as a screen reader does: finds its controls by role and name and reads what they tell.

assistive.py PROGRAM ARGUMENTS...: on a session bus of its own, with two titles in list 1. Ends with 0 and "fertig", or
with what was waited for in vain.
"""
import os
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds for each step; a step takes far less unless the machine is busy
ROLE = Atspi.Role


def wait_for(what, look):
    end = time.monotonic() + PATIENCE
    while True:
        try:
            found = look()
        except GLib.Error:  # it went while it was being asked
            found = None
        if found:
            return found
        if time.monotonic() > end:
            sys.exit("vergeblich gewartet: " + what)
        while GLib.MainContext.default().iteration(False):  # what has changed arrives as events
            pass
        time.sleep(0.02)


def children(thing):
    return (thing.get_child_at_index(i) for i in range(thing.get_child_count()))


def child_called(thing, start):
    return next((c for c in children(thing) if c and c.get_name().startswith(start)), None)


def search(thing, role, matches):
    """The first below a thing. What has many parts that are not looked for here is not gone into."""
    for child in children(thing):
        if child is None:
            continue
        if child.get_role() == role and matches(child.get_name()):
            return child
        if child.get_role() not in (ROLE.TABLE, ROLE.TREE, ROLE.MENU_BAR):
            found = search(child, role, matches)
            if found:
                return found
    return None


def find(window, role, name):
    return wait_for(name, lambda: search(window, role, lambda told: told == name))



def press(button):
    names = [Atspi.Action.get_action_name(button, i) for i in range(Atspi.Action.get_n_actions(button))]
    Atspi.Action.do_action(button, names.index("Press"))


def rows_of(table):
    return [Atspi.Table.get_accessible_at(table, row, 0).get_name() for row in range(Atspi.Table.get_n_rows(table))]


def work(window):
    # On air by the button's action; the head tells it and says it aloud, the button that it is on.
    head = find(window, ROLE.LABEL, "Player 1 BEREIT")
    said = []
    listener = Atspi.EventListener.new(lambda event: said.append(event.source.get_name()))
    listener.register("object:property-change:accessible-name")
    play = find(window, ROLE.PUSH_BUTTON, "Player 1: Wiedergabe")
    press(play)
    wait_for("Player 1 auf Sendung", lambda: head.get_name() == "Player 1 ON AIR")
    wait_for("Player 1 wird angesagt", lambda: "Player 1 ON AIR" in said)
    wait_for("Wiedergabe an", lambda: play.get_state_set().contains(Atspi.StateType.CHECKED))
    position = find(window, ROLE.SLIDER, "Player 1: Position")
    wait_for("die Position läuft", lambda: Atspi.Value.get_current_value(position) > 0)
    Atspi.Value.set_current_value(position, 20)
    wait_for("die Position springt", lambda: Atspi.Value.get_current_value(position) >= 20)

    # The fader by its value; it tells what that means for both players.
    fader = find(window, ROLE.SLIDER, "Überblendregler")
    Atspi.Value.set_current_value(fader, -100)
    wait_for("Regler links", lambda: Atspi.Value.get_current_value(fader) == -100)
    wait_for("Lautstärken", lambda: fader.get_description() == "Player 1: 100 %, Player 2: 0 %")

    # Typed into the quick search, the grid's rows follow.
    grid = find(window, ROLE.TABLE, "Titel im Musikarchiv")
    wait_for("alle Titel", lambda: len(rows_of(grid)) == 2)
    field = find(window, ROLE.TEXT, "Suche im Musikarchiv")
    Atspi.EditableText.insert_text(field, 0, "männer", len("männer"))
    wait_for("ein Titel", lambda: rows_of(grid) == ["Männersache"])
    lists = find(window, ROLE.TABLE, "Wiedergabeliste 1")
    wait_for("Liste 1", lambda: len(rows_of(lists)) == 2)


def main():
    environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_ACCESSIBILITY="1")
    program = subprocess.Popen(sys.argv[1:], env=environment)
    try:
        desktop = Atspi.get_desktop(0)
        desktop.set_cache_mask(Atspi.Cache.NONE)
        application = wait_for("das Programm", lambda: child_called(desktop, "Kalvo"))
        work(wait_for("das Hauptfenster", lambda: child_called(application, "Kalvo [")))
        print("fertig")
    finally:
        program.kill()
        program.wait()


main()
