#!/usr/bin/env python3
"""What the whole program costs, window and all: start, memory and processor share with two decks playing.

    bench/desk.py PROGRAM [--seconds 30] [--pegel]

Prints each figure beside its target; with --pegel only what each style of the level display adds to two decks playing. Starts a screen (Xvfb) and a sound server (pulseaudio) of its own and makes its
titles with lame; works on data folders of its own and leaves nothing behind.
"""
import argparse
import contextlib
import os
import pathlib
import random
import sqlite3
import statistics
import subprocess
import tempfile
import time
import wave

from peers.machine import Screen, Sound
from peers.titles import encode

TITLE_SECONDS = 240
STARTS = 7
BANDS = (80, 125, 250, 500, 1000, 2000, 4000, 8000, 12000, 16000)
STYLES = ("Kein", "Analyzer", "VU Meter", "Vertikal", "Horizontal", "Kreis 1Kanal", "Kreis 2Kanal", "Ellipse 1Kanal",
          "Ellipse 2Kanal")
WORDS = "Nacht Tanz Herz Stern Regen Feuer Traum Sommer Mond Wind Licht Stadt Fluss Sonne Farbe Weg".split()


class Program:
    """The running program; times in seconds."""

    def __init__(self, binary, data, screen, sound):
        environment = {**os.environ, "DISPLAY": screen.name, "QT_QPA_PLATFORM": "xcb", "SDL_AUDIODRIVER": "pulseaudio",
                       "PULSE_SERVER": f"unix:{sound.socket}"}
        begin = time.monotonic()
        self.process = subprocess.Popen([binary, "--datenordner", data, "--ohne-startauswahl"], env=environment,
                                        stderr=subprocess.DEVNULL)
        while not screen.window():
            if self.process.poll() is not None or time.monotonic() - begin > 60:
                raise SystemExit("the window does not come")
            time.sleep(0.002)
        self.start = time.monotonic() - begin

    def processor(self):
        if self.process.poll() is not None:
            raise SystemExit("the program has ended")
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def resident(self):
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0]) / 1024

    def share(self, seconds):
        """Percent of one core over the next seconds."""
        processor, begin = self.processor(), time.monotonic()
        time.sleep(seconds)
        return 100 * (self.processor() - processor) / (time.monotonic() - begin)

    def close(self):
        self.process.kill()
        self.process.wait()


def fill(binary, data, titles, count):
    """A data folder with an archive of so many titles and one title in each list."""
    empty = data.parent / "leer"
    empty.mkdir(exist_ok=True)
    subprocess.run([binary, "--datenordner", data, "--einlesen", empty], check=True, stdout=subprocess.DEVNULL)
    chance = random.Random(2)

    def text(words):
        return " ".join(chance.choice(WORDS) for _ in range(words))

    with contextlib.closing(sqlite3.connect(data / "Musikarchiv" / "default.mav")) as archive:
        rows = ((text(3), text(2), text(2), "Pop", "03:45", "1999", f"/musik/{text(1)}/{text(2)}/{number}.mp3",
                 text(4), "", str(number % 20), "120", "") for number in range(count))
        archive.executemany("INSERT INTO Daten (Titel, Interpret, Album, Stil, Zeit, Jahr, Pfad, Extra1, Extra2, Extra3,"
                            " Extra4, Bewertung) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)", rows)
        archive.commit()
    # The equaliser of both decks is on, all ten bands away from their middle.
    bands = "".join(f"{band}={14 if number % 2 else 6}\r\n" for number, band in enumerate(BANDS))
    (data / "kalvo.ini").write_text("[Equalizer]\r\nEQStatus=1\r\n" + bands, encoding="cp1252")
    (data / "Wiedergabeliste").mkdir(exist_ok=True)
    fields = "Titel Interpret Album Bewertung Stil Zeit Jahr Pfad Extra1 Extra2 Extra3 Extra4".split()
    with contextlib.closing(sqlite3.connect(data / "Wiedergabeliste" / "default.mav")) as lists:
        for number, title in enumerate(titles, 1):
            lists.execute(f"CREATE TABLE IF NOT EXISTS Player{number} (Nr INTEGER PRIMARY KEY AUTOINCREMENT, "
                          + ", ".join(f"{field} TEXT" for field in fields) + ")")
            lists.execute(f"INSERT INTO Player{number} (Titel, Interpret, Zeit, Extra4, Extra1, Pfad)"
                          " VALUES (?, 'Bench', '04:00', '1', '', ?)", (title.stem, str(title)))
        lists.commit()


def report(what, value, unit, target):
    verdict = "" if value <= target else "  OVER"
    print(f"{what:<58}{value:8.2f} {unit:<10} target {target:g} {unit}{verdict}", flush=True)


def measure(binary, folder, count, memory, seconds, screen, sound, titles):
    data = folder / f"Kalvo{count}"
    fill(binary, data, titles, count)
    starts = []
    for _ in range(STARTS):
        program = Program(binary, data, screen, sound)
        starts.append(program.start)
        time.sleep(0.5)
        program.close()
    report(f"{count} titles: start to window, median of {STARTS}", statistics.median(starts), "s", 0.3)
    program = Program(binary, data, screen, sound)
    try:
        time.sleep(3)
        print(f"{count} titles: nothing playing{'':<31}{program.share(10):8.2f} % of a core", flush=True)
        peaks = []
        for key in ("F1", "F5"):
            screen.press(key)
            time.sleep(2)
            peaks.append(sound.peak())
        if not 0 < 1.3 * peaks[0] < peaks[1]:
            raise SystemExit(f"the decks do not play: {peaks}")
        report(f"{count} titles: two decks playing, window visible", program.share(seconds), "% of a core", 4)
        report(f"{count} titles: resident memory, two decks playing", program.resident(), "MB", memory)
    finally:
        program.close()


def measure_meters(binary, folder, seconds, screen, sound, titles):
    """The styles take turns, three times; each beside the desk without a level display in its turn."""
    data = folder / "KalvoPegel"
    fill(binary, data, titles, 100)
    settings = (data / "kalvo.ini").read_text(encoding="cp1252")
    shares = {style: [] for style in STYLES}
    for _ in range(3):
        for style in STYLES:
            (data / "kalvo.ini").write_text(settings + f"[VU Meter]\r\nStyle={style}\r\n", encoding="cp1252")
            (data / "sitzung.json").unlink(missing_ok=True)  # no question whether the music shall go on
            program = Program(binary, data, screen, sound)
            try:
                time.sleep(2)
                for key in ("F1", "F5"):
                    screen.press(key)
                    time.sleep(1)
                if sound.peak() == 0:
                    raise SystemExit("the decks do not play")
                shares[style].append(program.share(seconds))
            finally:
                program.close()
    without = statistics.median(shares["Kein"])
    print(f"{'two decks playing without level display':<58}{without:8.2f} % of a core")
    for style in STYLES[1:]:
        report(f"added by {style}", statistics.median(shares[style]) - without, "% of a core", 3)


def measure_mix(binary, folder, titles):
    begin = time.monotonic()
    subprocess.run([binary, "--datenordner", folder / "Mix", "--mix", folder / "mix.wav", *titles], check=True,
                   stdout=subprocess.DEVNULL)
    elapsed = time.monotonic() - begin
    with wave.open(str(folder / "mix.wav")) as mix:
        length = mix.getnframes() / mix.getframerate()
    print(f"{'two MP3 titles mixed into a file, decoding included':<58}{length / elapsed:8.0f} times real time", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=lambda name: str(pathlib.Path(name).resolve()))
    parser.add_argument("--seconds", type=float, default=30, help="of the measurement while playing")
    parser.add_argument("--pegel", action="store_true", help="only the level display's styles")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as name, contextlib.ExitStack() as stack:
        folder = pathlib.Path(name)
        screen, sound = Screen(), Sound(folder)
        stack.callback(sound.close)
        stack.callback(screen.close)
        titles = [encode(folder, name, TITLE_SECONDS, tone, ["-b", "192"]) for name, tone in
                  (("eins.mp3", 330), ("zwei.mp3", 440))]
        if arguments.pegel:
            return measure_meters(arguments.program, folder, arguments.seconds, screen, sound, titles)
        measure_mix(arguments.program, folder, titles)
        for count, memory in ((5000, 90), (100000, 120)):
            measure(arguments.program, folder, count, memory, arguments.seconds, screen, sound, titles)


if __name__ == "__main__":
    main()
