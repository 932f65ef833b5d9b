"""A screen, a sound server and a message bus that nobody else sees, and what a program costs in them."""
import array
import ctypes
import math
import mmap
import os
import pathlib
import select
import struct
import subprocess
import tempfile
import time

RATE = 44100
# A window that is asked about may be gone by then; Xlib would end the process for it.
IGNORE_ERROR = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, error: 0)


class Screen:
    """An X display of its own; asked and worked through libX11 and libXtst, its picture read from memory."""

    def __init__(self, width=1280, height=800):
        self.width, self.height = width, height
        self.folder = tempfile.TemporaryDirectory()
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24",
                                        "-nolisten", "tcp", "-noreset", "-fbdir", self.folder.name],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with open(read) as pipe:
            number = pipe.readline().strip() if select.select([pipe], [], [], 20)[0] else ""
        if not number:
            raise SystemExit("Xvfb does not start")
        self.name = ":" + number
        with open(pathlib.Path(self.folder.name) / "Xvfb_screen0", "rb") as file:
            self.picture = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)  # an XWD file, its pixels at the end
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.xtst = ctypes.CDLL("libXtst.so.6")
        self.x11.XSetErrorHandler(IGNORE_ERROR)
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XStringToKeysym.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(self.name.encode()))

    def window(self):
        """The window of at least 500 pixels' width that is on the screen; 0 for none."""
        root, parent, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_uint()
        children = ctypes.POINTER(ctypes.c_ulong)()
        self.x11.XQueryTree(self.display, self.x11.XDefaultRootWindow(self.display), ctypes.byref(root),
                            ctypes.byref(parent), ctypes.byref(children), ctypes.byref(count))
        attributes = ctypes.create_string_buffer(256)  # XWindowAttributes: x, y, width, height ... map_state
        found = 0
        for index in range(count.value):
            if self.x11.XGetWindowAttributes(self.display, ctypes.c_ulong(children[index]), attributes):
                width = struct.unpack_from("i", attributes, 8)[0]
                viewable = struct.unpack_from("i", attributes, 92)[0] == 2
                found = children[index] if viewable and width >= 500 else found
        if children:
            self.x11.XFree(children)
        return found

    def press(self, key):
        self.x11.XSetInputFocus(self.display, ctypes.c_ulong(self.window()), 1, ctypes.c_ulong(0))
        code = self.x11.XKeysymToKeycode(self.display, ctypes.c_ulong(self.x11.XStringToKeysym(key.encode())))
        for down in (1, 0):
            self.xtst.XTestFakeKeyEvent(self.display, code, down, 0)
        self.x11.XFlush(self.display)

    def tiles(self):
        """The picture's lines in five pieces each."""
        piece = 4 * self.width // 5
        return [self.picture[begin:begin + piece]
                for begin in range(len(self.picture) - 4 * self.width * self.height, len(self.picture), piece)]

    def close(self):
        self.server.terminate()
        self.server.wait()
        self.folder.cleanup()


class Sound:
    """A sound server with one sink that nobody hears."""

    def __init__(self, folder):
        self.socket = folder / "native"
        self.server = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
             f"--load=module-native-protocol-unix auth-anonymous=1 socket={self.socket}",
             f"--load=module-null-sink sink_name=bench rate={RATE}"],
            stderr=subprocess.DEVNULL, env={**os.environ, "XDG_RUNTIME_DIR": str(folder), "HOME": str(folder)})
        deadline = time.monotonic() + 20
        while not self.socket.exists():
            if time.monotonic() > deadline:
                raise SystemExit("pulseaudio does not start")
            time.sleep(0.02)

    def samples(self):
        """The next second of the left channel, 0..1."""
        recorder = subprocess.Popen(["parec", f"--server=unix:{self.socket}", "--raw", "--device=bench.monitor",
                                     f"--rate={RATE}", "--format=s16le"], stdout=subprocess.PIPE,
                                    stderr=subprocess.DEVNULL)
        samples = array.array("h", recorder.stdout.read(4 * RATE))
        recorder.kill()
        recorder.wait()
        return [sample / 32768 for sample in samples[::2]]

    def streams(self):
        """Whether anyone has a stream to the sink."""
        return subprocess.run(["pactl", f"--server=unix:{self.socket}", "list", "short", "sink-inputs"],
                              capture_output=True, check=False).stdout != b""

    def peak(self):
        """The loudest sample of the next second, 0..1."""
        return max(abs(sample) for sample in self.samples())

    def close(self):
        self.server.terminate()
        self.server.wait()


class Bus:
    """A message bus of its own."""

    def __init__(self, folder):
        self.address = f"unix:path={folder / 'bus'}"
        self.server = subprocess.Popen(["dbus-daemon", "--session", "--nofork", f"--address={self.address}"],
                                       stderr=subprocess.DEVNULL)

    def close(self):
        self.server.terminate()
        self.server.wait()


def strength(samples, frequency):
    """How much of a tone is in the samples: its amplitude, 0..1 (Goertzel)."""
    turn = 2 * math.cos(2 * math.pi * frequency / RATE)
    last = before = 0.0
    for sample in samples:
        last, before = sample + turn * last - before, last
    return 2 * math.sqrt(max(0.0, last * last + before * before - turn * last * before)) / len(samples)


def family(process):
    """The process and all that came from it, by number."""
    numbers = [process]
    for task in pathlib.Path(f"/proc/{process}/task").glob("*/children"):
        for child in task.read_text().split():
            numbers += family(int(child))
    return numbers


def processor(process):
    """Seconds of processor time of a process and its children so far."""
    total = 0
    for number in family(process):
        fields = pathlib.Path(f"/proc/{number}/stat").read_text().rsplit(")", 1)[1].split()
        total += int(fields[11]) + int(fields[12])
    return total / os.sysconf("SC_CLK_TCK")


def share(process, seconds):
    """Percent of one core over the next seconds."""
    before, begin = processor(process), time.monotonic()
    time.sleep(seconds)
    return 100 * (processor(process) - before) / (time.monotonic() - begin)


def memory(process):
    """MiB of a process and its children; what they share with others counts in part (PSS)."""
    return sum(int(line.split()[1]) for number in family(process)
               for line in pathlib.Path(f"/proc/{number}/smaps_rollup").read_text().splitlines()
               if line.startswith("Pss:")) / 1024
