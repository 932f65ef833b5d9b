"""Tagged titles made by encoders: a folder of many short ones to import, and long ones to play."""
import io
import math
import random
import struct
import subprocess
import wave

WORDS = ("Nacht Tanz Herz Stern Regen Feuer Traum Sommer Mond Wind Licht Stadt Fluss Sonne Farbe Weg Love Night Dance "
         "Heart Fire Dream River Light Road Moon Time Rain Blue Summer Home World").split()
GENRES = "Rock Pop Schlager Disco House Techno Jazz Blues Soul Funk".split()
TITLES_PER_FOLDER = 12


def encode(folder, name, seconds, frequency, options):
    """A tone with noise, so that meters and decoders have something to do; by lame or oggenc, as the name asks."""
    source, target = folder / "a.wav", folder / name
    noise = random.Random(1)
    tones = (0.2 * math.sin(2 * math.pi * frequency * frame / 44100) + 0.05 * noise.uniform(-1, 1)
             for frame in range(44100))
    second = b"".join(struct.pack("<hh", int(32767 * tone), int(24000 * tone)) for tone in tones)
    with wave.open(str(source), "wb") as out:
        out.setparams((2, 2, 44100, 0, "NONE", ""))
        out.writeframes(second * seconds)
    command = (["oggenc", "-Q", *options, "-o", target, source] if name.endswith(".ogg")
               else ["lame", "--quiet", *options, source, target])
    subprocess.run(command, check=True)
    source.unlink()
    return target


def fill(folder, count):
    """So many tagged titles of two seconds, every fifth an OGG, twelve to a folder; nothing if they are there."""
    import mutagen.id3 as id3
    import mutagen.oggvorbis

    done = folder / ".fertig"
    if done.exists() and done.read_text() == str(count):
        return
    folder.mkdir(parents=True, exist_ok=True)
    mp3s = [encode(folder, f"a{tone}.mp3", 2, tone, ["-b", "32", "-m", "m"]) for tone in (330, 440, 550)]
    oggs = [encode(folder, f"a{tone}.ogg", 2, tone, ["-q", "-1", "--downmix"]) for tone in (330, 440, 550)]
    sources = {path: path.read_bytes() for path in mp3s + oggs}
    for path in sources:
        path.unlink()
    chance = random.Random(2)

    def text(words):
        return " ".join(chance.choice(WORDS) for _ in range(words))

    for number in range(count):
        if number % TITLES_PER_FOLDER == 0:
            artist, album, year = text(2), text(2), str(1960 + chance.randrange(60))
            place = folder / f"{number // TITLES_PER_FOLDER:05d} {album}"
            place.mkdir(exist_ok=True)
        title, track = text(3), str(number % TITLES_PER_FOLDER + 1)
        ogg = number % 5 == 4
        content = io.BytesIO(sources[(oggs if ogg else mp3s)[number % 3]])
        if ogg:
            tags = mutagen.oggvorbis.OggVorbis(content)
            tags.update(title=title, artist=artist, album=album, genre=chance.choice(GENRES), date=year,
                        tracknumber=track)
            content.seek(0)
        else:
            tags = id3.ID3()
            for frame, value in ((id3.TIT2, title), (id3.TPE1, artist), (id3.TALB, album), (id3.TDRC, year),
                                 (id3.TCON, chance.choice(GENRES)), (id3.TRCK, track)):
                tags.add(frame(encoding=3, text=value))
        tags.save(content)
        (place / f"{int(track):02d} {title}.{'ogg' if ogg else 'mp3'}").write_bytes(content.getvalue())
    done.write_text(str(count))
