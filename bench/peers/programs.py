"""The programs that are compared: how each is set up without its questions, filled, started and made to play."""
import contextlib
import os
import socket
import sqlite3
import subprocess
import time

from peers import machine

WINDOW_SECONDS = 90
IMPORT_SECONDS = 1500
SET_UP_SECONDS = 4
STAND_SECONDS, STAND_PART = 10, 0.05


class Room:
    """Screen, sound and bus for the programs, and the environment that leads a program there and nowhere else."""

    def __init__(self, folder):
        self.folder = folder
        self.screen, self.sound, self.bus = machine.Screen(1600, 1000), machine.Sound(folder), machine.Bus(folder)

    def environment(self, home):
        return {"PATH": "/usr/local/bin:/usr/bin:/bin:/usr/games", "LANG": "C.UTF-8", "NO_AT_BRIDGE": "1",
                "HOME": str(home), "XDG_CONFIG_HOME": str(home / "config"), "XDG_DATA_HOME": str(home / "data"),
                "XDG_CACHE_HOME": str(home / "cache"), "XDG_RUNTIME_DIR": str(self.folder),
                "DBUS_SESSION_BUS_ADDRESS": self.bus.address, "DISPLAY": self.screen.name,
                "SDL_AUDIODRIVER": "pulseaudio", "PULSE_SERVER": f"unix:{self.sound.socket}",
                "PULSE_LATENCY_MSEC": "93", "JACK_NO_START_SERVER": "1"}

    def close(self):
        for part in (self.bus, self.sound, self.screen):
            part.close()


class Program:
    """A program with a home of its own. Subclasses say how it is set up; times in seconds."""

    name = package = ""
    needs = ()  # packages it plays MP3 with
    decks = 1

    def __init__(self, room):
        self.room = room
        self.process = None
        self.home = None

    def version(self):
        asked = subprocess.run(["dpkg-query", "-W", "-f", "${db:Status-Status} ${Version}", self.package],
                               capture_output=True, text=True, check=False).stdout.split()
        return asked[1] if asked[:1] == ["installed"] else None

    def set_up(self, music, scan):
        """Writes the settings; scan: the program looks through the folder music when it starts."""

    def command(self, titles):
        """The call that starts it; titles: long titles to be loaded, none for an idle start."""

    def count(self):
        """Titles in the library, as far as they are stored."""

    def play(self, titles):
        """Starts the titles that command() loaded, one in each deck."""

    def launch(self, titles=()):
        with open(self.home / "output", "wb") as output:
            self.process = subprocess.Popen(self.command(titles), env=self.room.environment(self.home), stdout=output,
                                            stderr=output, cwd=self.home)

    def shown(self):
        return self.room.screen.window() != 0

    def wait(self, condition, seconds, pause=0.002):
        deadline = time.monotonic() + seconds
        while not condition():
            if self.process.poll() is not None or time.monotonic() > deadline:
                raise SystemExit(f"{self.name}: what was waited for does not come, see {self.home}/output")
            time.sleep(pause)

    def start(self, titles=()):
        """Starts it; until its window is on the screen, and until its picture stands."""
        begin = time.monotonic()
        self.launch(titles)
        self.wait(self.shown, WINDOW_SECONDS)
        return time.monotonic() - begin, self.stands() - begin

    def stands(self):
        """When the last change of more than a twentieth of the screen came, before ten seconds without."""
        begin = last = time.monotonic()
        tiles = self.room.screen.tiles()
        while time.monotonic() < last + STAND_SECONDS and last < begin + WINDOW_SECONDS:
            time.sleep(0.02)
            now = self.room.screen.tiles()
            if sum(old != new for old, new in zip(tiles, now)) > STAND_PART * len(tiles):
                tiles, last = now, time.monotonic()
        return last

    def fill(self, music, count):
        """Imports a folder into an empty library; titles per second and processor seconds, from the window on."""
        self.set_up(music, scan=True)
        self.launch()
        self.wait(self.shown, WINDOW_SECONDS)
        begin, used = time.monotonic(), machine.processor(self.process.pid)
        self.import_all(count)
        elapsed, used = time.monotonic() - begin, machine.processor(self.process.pid) - used
        if self.count() < count:
            raise SystemExit(f"{self.name} has imported {self.count()} titles")
        return count / elapsed, used

    def import_all(self, count):
        """Returns when so many titles are in the library."""
        self.wait(lambda: self.count() >= count, IMPORT_SECONDS, 0.1)

    def close(self):
        if self.process and self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(30)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.process = None


def rows(database, table):
    """How many rows a table has; none while there is no table or it is being written."""
    if not database.exists():
        return None
    with contextlib.closing(sqlite3.connect(f"file:{database}?mode=ro", uri=True, timeout=1)) as connection:
        try:
            return connection.execute(f"SELECT count(*) FROM {table}").fetchone()[0]
        except sqlite3.OperationalError:
            return None


def execute(database, statement, values=()):
    with contextlib.closing(sqlite3.connect(database)) as connection:
        connection.execute(statement, values)
        connection.commit()


class Kalvo(Program):
    name = "Kalvo"
    decks = 2
    keys = ("F1", "F5")

    def __init__(self, room, binary):
        super().__init__(room)
        self.binary = binary

    def version(self):
        return subprocess.run([self.binary, "--version"], capture_output=True, text=True, check=True).stdout.split()[-1]

    def data(self):
        return self.home / "daten"

    def command(self, titles):
        return [self.binary, "--datenordner", self.data(), "--ohne-startauswahl"]

    def count(self):
        return rows(self.data() / "Musikarchiv" / "default.mav", "Daten") or 0

    def fill(self, music, count):
        """By its command line, start and end of the program included."""
        begin, used = time.monotonic(), os.times()
        subprocess.run([self.binary, "--datenordner", self.data(), "--einlesen", music], check=True,
                       env=self.room.environment(self.home), stdout=subprocess.DEVNULL)
        elapsed, after = time.monotonic() - begin, os.times()
        if self.count() < count:
            raise SystemExit(f"Kalvo has imported {self.count()} titles")
        return count / elapsed, after[2] + after[3] - used[2] - used[3]

    def launch(self, titles=()):
        folder = self.data() / "Wiedergabeliste"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "default.mav").unlink(missing_ok=True)
        (self.data() / "sitzung.json").unlink(missing_ok=True)  # or it would ask whether the last title shall go on
        fields = "Titel Interpret Album Bewertung Stil Zeit Jahr Pfad Extra1 Extra2 Extra3 Extra4".split()
        for number, title in enumerate(titles, 1):
            execute(folder / "default.mav", f"CREATE TABLE Player{number} (Nr INTEGER PRIMARY KEY AUTOINCREMENT, "
                    + ", ".join(f"{field} TEXT" for field in fields) + ")")
            execute(folder / "default.mav", f"INSERT INTO Player{number} (Titel, Interpret, Zeit, Extra4, Extra1, Pfad)"
                    " VALUES (?, 'Bench', '04:00', '1', '', ?)", (title.stem, str(title)))
        super().launch(titles)

    def play(self, titles):
        for key in self.keys[:len(titles)]:
            self.room.screen.press(key)
            time.sleep(1)


class Mixxx(Program):
    name, package = "Mixxx", "mixxx"
    needs = ("libasound2-plugins",)
    decks = 2
    keys = ("d", "l")

    def set_up(self, music, scan):
        (self.home / "s").mkdir(exist_ok=True)
        # Waveforms off: without a graphics card they would be drawn by the processor.
        (self.home / "s" / "mixxx.cfg").write_text(
            f"[Library]\nRescanOnStartup {int(scan)}\n\n[Keyboard]\nEnabled 1\n\n[Waveform]\nWaveformType 0\n\n"
            "[Config]\nVersion 2.3.3\n")
        (self.home / "s" / "soundconfig.xml").write_text(
            '<!DOCTYPE SoundManagerConfig>\n<SoundManagerConfig api="ALSA" samplerate="44100" latency="5" '
            'sync_buffers="2" force_network_clock="0" deck_count="2">\n'
            ' <SoundDevice name="default" alsaHwDevice="" portAudioIndex="0">\n'
            '  <output type="Master" index="0" channel="0" channel_count="2"/>\n'
            ' </SoundDevice>\n</SoundManagerConfig>\n')
        (self.home / ".asoundrc").write_text("pcm.!default { type pulse }\nctl.!default { type pulse }\n")
        if not self.database().exists():
            self.launch()  # makes the database, then asks for a folder
            self.wait(lambda: rows(self.database(), "directories") is not None, WINDOW_SECONDS, 0.5)
            time.sleep(SET_UP_SECONDS)
            self.close()
            execute(self.database(), "INSERT INTO directories VALUES (?)", (str(music),))

    def database(self):
        return self.home / "s" / "mixxxdb.sqlite"

    def command(self, titles):
        return ["mixxx", *titles, "--settingsPath", f"{self.home}/s/"]  # behind it a title would go to the second deck

    def count(self):
        return rows(self.database(), "library") or 0

    def stands(self):
        """Its window shows a picture of the start for some seconds: its sound comes when the work is done."""
        self.wait(self.room.sound.streams, WINDOW_SECONDS, 0.1)
        return super().stands()

    def play(self, titles):
        for key in self.keys[:len(titles)]:
            self.room.screen.press(key)
            time.sleep(1)


class Strawberry(Program):
    name, package = "Strawberry", "strawberry"
    needs = ("gstreamer1.0-plugins-good", "gstreamer1.0-pulseaudio")

    def set_up(self, music, scan):
        settings = self.home / "config" / "strawberry"
        settings.mkdir(parents=True, exist_ok=True)
        (settings / "strawberry.conf").write_text(
            f"[Collection]\nstartup_scan={str(scan).lower()}\nmonitor=false\n\n"
            "[MainWindow]\ndo_not_show_sponsor_message=true\n")
        if not self.database().exists():
            self.launch()  # makes the database
            self.wait(lambda: rows(self.database(), "directories") is not None, WINDOW_SECONDS, 0.5)
            time.sleep(SET_UP_SECONDS)
            self.close()
            execute(self.database(), "INSERT INTO directories VALUES (?, 1)", (str(music),))

    def database(self):
        return self.home / "data" / "strawberry" / "strawberry" / "strawberry.db"

    def command(self, titles):
        return ["strawberry", "--quiet", *(["--play", "--load", *titles] if titles else [])]

    def count(self):
        return rows(self.database(), "songs") or 0


class Mpd(Program):
    """Without a window: it is up when it answers."""

    name, package = "MPD", "mpd"

    def set_up(self, music, scan):
        (self.home / "mpd.conf").write_text(
            f'music_directory "{music}"\ndb_file "{self.home}/db"\nbind_to_address "{self.home}/socket"\n'
            'audio_output {\n type "pulse"\n name "bench"\n}\n')

    def command(self, titles):
        return ["mpd", "--no-daemon", "--stderr", self.home / "mpd.conf"]

    def ask(self, line):
        """The lines of an answer; none while nobody answers."""
        with socket.socket(socket.AF_UNIX) as connection, contextlib.suppress(OSError):
            connection.connect(str(self.home / "socket"))
            with connection.makefile("rw") as stream:
                stream.readline()
                stream.write(line + "\n")
                stream.flush()
                return list(iter(lambda: stream.readline().strip() or "OK", "OK"))
        return []

    def launch(self, titles=()):
        (self.home / "socket").unlink(missing_ok=True)
        super().launch(titles)

    def shown(self):
        return self.ask("status") != []

    def count(self):
        return int(dict(line.split(": ", 1) for line in self.ask("stats")).get("songs", 0))

    def import_all(self, count):
        self.ask("update")
        self.wait(lambda: not any(line.startswith("updating_db") for line in self.ask("status")), IMPORT_SECONDS, 0.02)

    def stands(self):
        return time.monotonic()

    def play(self, titles):
        for line in ("clear", f'add "file://{titles[0]}"', "play"):
            self.ask(line)


PEERS = (Mixxx, Strawberry, Mpd)
