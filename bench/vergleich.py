#!/usr/bin/python3
"""Kalvo beside other programs for music on the same files, screen and sound server: import, start, memory, processor.

    bench/vergleich.py KALVO [--installieren] [--daten FOLDER] [--nur MEASURE ...] [--runden 5]

Peers come from Debian; one that is missing is left out and said, or installed with --installieren. Everything runs in
homes below --daten (about 1.5 GB, made once), with a screen, a sound server and a message bus that nobody else uses.
Each round lets the programs take turns. Figures are kept in the data folder, so that rounds can be taken one by one
while the machine is quiet; the table of all of them is printed at the end. What it works with (TOOLS) is installed with
--installieren too.
"""
import argparse
import contextlib
import json
import os
import pathlib
import platform
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

from peers import machine, programs, titles

TOOLS = ("dbus", "lame", "libx11-6", "libxtst6", "pulseaudio", "pulseaudio-utils", "python3-mutagen", "vorbis-tools",
         "xvfb")
IMPORTED, STARTED = 20000, 100000
TONES = (330, 440)
TITLE_SECONDS = 240
ANALYSIS_SECONDS, SETTLE_SECONDS, PLAY_SECONDS = 30, 2, 10
MEASURES = {
    "einlesen": "files imported per second, 20,000 files",
    "rechenzeit": "processor time of it, µs a file",
    "fenster": "start with 100,000 titles to the window, s",
    "bild": "start with 100,000 titles until its picture stands, s",
    "speicher": "memory with 100,000 titles, idle, MiB (PSS)",
    "leer": "processor, nothing playing, % of a core",
    "einer": "processor, one title playing, % of a core",
    "zwei": "processor, two decks playing, % of a core",
}
PARTS = ("einlesen", "start", "spielen")


class Figures:
    """What was measured so far: values of each measure and program, and the programs' versions."""

    def __init__(self, file=None):
        self.file = file
        known = json.loads(file.read_text()) if file and file.exists() else {"versions": {}, "values": {}}
        self.versions, self.values = known["versions"], known["values"]

    def add(self, measure, program, value):
        self.values.setdefault(measure, {}).setdefault(program, []).append(value)
        print(f"{program}: {MEASURES[measure]}: {value:.2f}", file=sys.stderr, flush=True)
        if self.file:
            self.file.write_text(json.dumps({"versions": self.versions, "values": self.values}, indent=1))

    def table(self):
        """Markdown; a cell is median, least and greatest, a dash where nothing was measured."""
        names = list(self.versions)
        lines = ["| measured | " + " | ".join(f"{name} {self.versions[name]}" for name in names) + " |",
                 "|---" * (len(names) + 1) + "|"]
        for measure, text in MEASURES.items():
            values = self.values.get(measure, {})
            cells = [cell(values[name]) if name in values else "-" for name in names]
            lines.append(f"| {text} | " + " | ".join(cells) + " |")
        return "\n".join(lines)


def cell(values):
    digits = 0 if statistics.median(values) >= 20 else 1 if statistics.median(values) >= 5 else 2
    middle, least, greatest = (f"{value:,.{digits}f}" for value in
                               (statistics.median(values), min(values), max(values)))
    return f"**{middle}** ({least} - {greatest})"


def take_home(program, folder):
    program.home = folder
    program.home.mkdir(parents=True, exist_ok=True)


def measure_import(program, data, figures):
    home = data / "homes" / f"{program.name}-neu"
    shutil.rmtree(home, ignore_errors=True)
    take_home(program, home)
    rate, used = program.fill(data / f"musik{IMPORTED}", IMPORTED)
    figures.add("einlesen", program.name, rate)
    figures.add("rechenzeit", program.name, 1e6 * used / IMPORTED)


def prepare(program, data, long):
    """A home with 100,000 titles, filled by the program itself, with the long titles analysed where it does so."""
    take_home(program, data / "homes" / program.name)
    done = program.home / ".fertig"
    if not done.exists():
        print(f"{program.name} imports {STARTED} titles", file=sys.stderr, flush=True)
        program.fill(data / f"musik{STARTED}", STARTED)
        program.close()
        program.set_up(data / f"musik{STARTED}", scan=False)
        program.start(long[:program.decks])
        time.sleep(ANALYSIS_SECONDS)
        program.close()
        done.touch()


def measure_start(program, data, figures, long):
    prepare(program, data, long)
    window, stands = program.start()
    time.sleep(SETTLE_SECONDS)
    figures.add("fenster", program.name, window)
    figures.add("bild", program.name, stands)
    figures.add("speicher", program.name, machine.memory(program.process.pid))
    figures.add("leer", program.name, machine.share(program.process.pid, PLAY_SECONDS))


def measure_play(program, data, figures, long):
    prepare(program, data, long)
    for measure, decks in (("einer", 1), ("zwei", 2)):
        if decks > program.decks:
            continue
        program.start(long[:decks])
        time.sleep(SETTLE_SECONDS)
        program.play(long[:decks])
        time.sleep(SETTLE_SECONDS)
        samples = program.room.sound.samples()
        heard = [machine.strength(samples, tone) > 0.01 for tone in TONES]
        if heard != [True, decks == 2]:
            raise SystemExit(f"{program.name}: {decks} titles should be heard, but {heard}")
        figures.add(measure, program.name, machine.share(program.process.pid, PLAY_SECONDS))
        program.close()


def install(*packages):
    subprocess.run(["apt-get", "install", "-y", "-qq", "--no-install-recommends", *packages], check=True,
                   stdout=sys.stderr)


def present(room, binary, may_install):
    """The programs that can be measured; missing ones are installed or named."""
    found = [programs.Kalvo(room, binary)]
    for peer in (make(room) for make in programs.PEERS):
        if not peer.version() and may_install:
            install(peer.package, *peer.needs)
        if peer.version():
            found.append(peer)
        else:
            print(f"{peer.name} is left out: package {peer.package} is not installed", file=sys.stderr)
    return found


def measure(arguments, data, room):
    long = [data / f"lang{tone}.mp3" for tone in TONES]
    for title, tone in zip(long, TONES):
        if not title.exists():
            titles.encode(data, title.name, TITLE_SECONDS, tone, ["-b", "192"])
    for count in (IMPORTED, STARTED):
        titles.fill(data / f"musik{count}", count)
    figures = Figures(data / "figures.json")
    found = [program for program in present(room, arguments.program, arguments.installieren)
             if not arguments.programme or program.name in arguments.programme]
    figures.versions.update({program.name: program.version() for program in found})
    for part in arguments.nur:
        for _ in range(arguments.runden):
            for program in found:
                try:
                    if part == "einlesen":
                        measure_import(program, data, figures)
                    elif part == "start":
                        measure_start(program, data, figures, long)
                    else:
                        measure_play(program, data, figures, long)
                finally:
                    program.close()
    return figures


def self_test():
    """What is read and reckoned here, without any program."""
    tone = [0.2 * machine.math.sin(2 * machine.math.pi * 330 * frame / machine.RATE) for frame in range(machine.RATE)]
    assert abs(machine.strength(tone, 330) - 0.2) < 0.001 and machine.strength(tone, 440) < 0.001
    figures = Figures()
    figures.versions = {"A": "1.0", "B": "2"}
    for value in (3, 1, 30000, 2, 1000):
        figures.add("einlesen", "A", value)
    assert "| **3.00** (1.00 - 30,000.00) | - |" in figures.table(), figures.table()
    assert cell([12, 10, 20]) == "**12.0** (10.0 - 20.0)" and cell([2500, 100]) == "**1,300** (100 - 2,500)"
    child = subprocess.Popen(["sleep", "9"])
    try:
        assert child.pid in machine.family(os.getpid()) and machine.memory(os.getpid()) > 1
        assert machine.processor(os.getpid()) > 0
    finally:
        child.kill()
        child.wait()
    print("in order")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", nargs="?", type=lambda name: str(pathlib.Path(name).resolve()))
    parser.add_argument("--installieren", action="store_true", help="install missing peers and tools by apt-get")
    parser.add_argument("--daten", type=pathlib.Path, help="keep data and figures there (else: made and removed)")
    parser.add_argument("--nur", nargs="+", choices=PARTS, default=PARTS, help="only these parts")
    parser.add_argument("--programme", nargs="+", help="only these programs")
    parser.add_argument("--runden", type=int, default=5)
    parser.add_argument("--selbsttest", action="store_true")
    arguments = parser.parse_args()
    if arguments.selbsttest:
        return self_test()
    if not arguments.program:
        parser.error("which program is Kalvo?")
    if arguments.installieren:
        install(*TOOLS)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("stopped"))  # what was started ends with it
    with contextlib.ExitStack() as stack:
        data = arguments.daten or pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory()))
        data = data.resolve()
        data.mkdir(parents=True, exist_ok=True)
        room = programs.Room(pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory())))
        stack.callback(room.close)
        figures = measure(arguments, data, room)
    print(f"{os.cpu_count()} cores, {platform.freedesktop_os_release()['PRETTY_NAME']}, median (least - greatest) of "
          f"{max(len(values) for measured in figures.values.values() for values in measured.values())} runs\n")
    print(figures.table())


if __name__ == "__main__":
    main()
