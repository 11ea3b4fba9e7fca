"""What `tevs` makes of files and pipes. TEVS is the program, TEVS_SOURCE the directory of its manual page."""
import array
import ctypes
import math
import os
import pathlib
import pty
import random
import re
import resource
import shutil
import signal
import stat
import struct
import subprocess
import sys
import tempfile
import time
import unittest

TEVS = os.environ["TEVS"]
SOURCE = pathlib.Path(os.environ["TEVS_SOURCE"])
DONE, FAILED, USAGE = 0, 1, 2


class Case(unittest.TestCase):
    def setUp(self):
        self.dir = pathlib.Path(tempfile.mkdtemp(prefix="tevs-tool-"))
        self.addCleanup(shutil.rmtree, self.dir, True)

    def run_tevs(self, *arguments, data=None, **options):
        return subprocess.run([TEVS, *map(str, arguments)], input=data, stdin=None if data is not None else subprocess.DEVNULL, capture_output=True, cwd=self.dir, **options)

    def tevs(self, *arguments, data=None):
        done = self.run_tevs(*arguments, data=data)
        self.assertEqual(done.returncode, DONE, (arguments, done.stderr))
        return done.stdout

    # Doubles in, doubles out, by way of pipes without headers.
    def through(self, command, x, *arguments, rate=48000, channels=1):
        out = self.tevs(command, "-", "-", "--raw-in", f"f64,{rate},{channels}", "--raw-out", "f64", *arguments, data=array.array("d", x).tobytes())
        return array.array("d", out)

    def samples(self, name):
        return array.array("d", self.tevs("convert", name, "-", "--raw-out", "f64"))

    def names(self):
        return sorted(p.name for p in self.dir.iterdir())


def sine(hertz, rate, count, amplitude=0.5):
    return [amplitude * math.sin(2 * math.pi * hertz * n / rate) for n in range(count)]


def rms(x):
    return math.sqrt(math.fsum(v * v for v in x) / len(x))


def decibels(ratio):
    return 20 * math.log10(max(ratio, 1e-300))


def pixels(path):
    """Width, height and rows of (r, g, b) of a PNG picture."""
    cairo = ctypes.CDLL("libcairo.so.2")   # by which the tool draws
    for function in (cairo.cairo_image_surface_create_from_png, cairo.cairo_image_surface_get_data):
        function.restype = ctypes.c_void_p
    surface = ctypes.c_void_p(cairo.cairo_image_surface_create_from_png(os.fsencode(path)))
    width, height, stride = (get(surface) for get in (cairo.cairo_image_surface_get_width, cairo.cairo_image_surface_get_height, cairo.cairo_image_surface_get_stride))
    data = ctypes.string_at(cairo.cairo_image_surface_get_data(surface), height * stride)
    cairo.cairo_surface_destroy(surface)
    return width, height, [[(data[i + 2], data[i + 1], data[i]) for i in range(v * stride, v * stride + 4 * width, 4)] for v in range(height)]


class Formats(Case):
    WIDTH = {"u8": 1, "s8": 1, "s16": 2, "s24": 3, "s32": 4, "f32": 4, "f64": 8, "ulaw": 1, "alaw": 1, "s24be": 3, "s16be": 2}

    def test_integers_come_back_to_the_bit(self):
        noise = random.Random(1)
        for extension, types in {"wav": ("u8", "s16", "s24", "s32"), "flac": ("s16", "s24"), "aiff": ("s8", "s16", "s24", "s32"), "au": ("s8", "s16", "s24", "s32"),
                                 "caf": ("s8", "s16", "s24", "s32"), "w64": ("u8", "s16", "s32"), "rf64": ("s16", "s24")}.items():
            for kind in types:
                for channels in (1, 2, 5):
                    data = noise.randbytes(self.WIDTH[kind] * channels * 40002)   # even: libsndfile reads the padding byte of an odd AIFF chunk as a frame
                    self.tevs("convert", "-", f"a.{extension}", "--raw-in", f"{kind},44100,{channels}", "--type", kind, data=data)
                    back = self.tevs("convert", f"a.{extension}", "-", "--raw-out", kind)
                    self.assertTrue(back == data, (extension, kind, channels))

    def test_raw_samples_of_every_type(self):
        noise = random.Random(2)
        for kind, width in self.WIDTH.items():
            data = noise.randbytes(width * 6000)
            if kind in ("f32", "f64"):
                data = array.array(kind[1:] == "32" and "f" or "d", [noise.uniform(-2, 2) for _ in range(6000)]).tobytes()
            back = self.tevs("convert", "-", "-", "--raw-in", f"{kind},8000", "--raw-out", kind, data=data)
            if kind in ("ulaw", "alaw"):   # mu-law has two codes for 0
                back, data = back.replace(b"\x7f", b"\xff"), data.replace(b"\x7f", b"\xff")
            self.assertTrue(back == data, kind)

    def test_wider_and_back(self):
        data = random.Random(3).randbytes(2 * 2 * 10000)
        self.tevs("convert", "-", "a.wav", "--raw-in", "s16,48000,2", data=data)
        for name, kind in (("b.flac", "s24"), ("b.wav", "f32"), ("b.caf", "s32"), ("b.au", "f64")):
            self.tevs("convert", "a.wav", name, "--type", kind)
            self.assertTrue(self.tevs("convert", name, "-", "--raw-out", "s16") == data, name)

    def test_rounding_and_clipping(self):
        for kind, bits, code in (("s16", 16, "h"), ("s8", 8, "b"), ("s32", 32, "i")):
            full = 2.0 ** (bits - 1)
            rows = [(0.5, 0), (1.5, 2), (2.5, 2), (-0.5, 0), (-1.5, -2), (full - 1, full - 1), (full, full - 1), (3 * full, full - 1), (-full, -full),
                    (-full - 0.5, -full), (-2 * full, -full)]
            done = self.run_tevs("convert", "-", "-", "--raw-in", "f64,8000", "--raw-out", kind, data=array.array("d", [x / full for x, _ in rows]).tobytes())
            self.assertEqual(list(array.array(code, done.stdout)), [int(y) for _, y in rows], kind)
            self.assertIn(b"3 samples were beyond full scale", done.stderr)
        data = self.tevs("convert", "-", "-", "--raw-in", "f64,8000", "--raw-out", "s24", data=array.array("d", [1.5 / 2**23, 1, -1]).tobytes())
        self.assertEqual(data, b"\x02\x00\x00\xff\xff\x7f\x00\x00\x80")

    def test_dither(self):
        steps = array.array("h", self.tevs("convert", "-", "-", "--raw-in", "f64,8000", "--raw-out", "s16", "--dither", data=array.array("d", [0.25 / 32768] * 100000).tobytes()))
        self.assertEqual({-1, 0, 1}, set(steps))
        self.assertAlmostEqual(sum(steps) / len(steps), 0.25, delta=0.01)   # the mean is kept, where rounding alone gives 0

    def test_types_follow_the_input(self):
        self.tevs("tone", "a.wav", "--freq", "100", "--type", "s24")
        for name, kind in (("b.flac", "s24"), ("b.ogg", "vorbis"), ("b.opus", "opus"), ("b.mp3", "mp3"), ("b.aiff", "s24")):
            self.tevs("convert", "a.wav", name)
            self.assertRegex(self.tevs("info", name).decode(), rf"samples +{kind}\n")
            self.tevs("convert", name, "c.wav")   # what is coded is not in another container
            self.assertRegex(self.tevs("info", "c.wav").decode(), rf"samples +{kind if kind == 's24' else 's16'}\n")
            self.assertRegex(self.tevs("info", "c.wav").decode(), r"frames +48000\n")

    def test_lengths_that_a_pipe_does_not_tell(self):
        data = random.Random(4).randbytes(2 * 100001)
        done = subprocess.run(f"cat | {TEVS} convert - a.wav --raw-in s16,8000", shell=True, input=data, cwd=self.dir)
        self.assertEqual(done.returncode, DONE)
        self.assertEqual((self.dir / "a.wav").read_bytes()[:4], b"RIFF")   # not RF64, as the file turned out to be short
        self.assertTrue(self.tevs("convert", "a.wav", "-", "--raw-out", "s16") == data)

    def test_channels_start_length_and_gain(self):
        x = [random.Random(5).uniform(-1, 1) for _ in range(3 * 1000)]
        got = self.through("convert", x, "--channels", "3,1,1", "--start", "0.025", "--length", "0.05", "--gain", "-6.020599913279624", rate=8000, channels=3)
        want = [v / 2 for f in range(200, 600) for v in (x[3 * f + 2], x[3 * f], x[3 * f])]
        self.assertLess(max(abs(a - b) for a, b in zip(got, want, strict=True)), 1e-15)
        mix = self.through("convert", x, "--channels", "mix", rate=8000, channels=3)
        self.assertLess(max(abs(m - sum(x[3 * f:3 * f + 3]) / 3) for f, m in enumerate(mix)), 1e-15)
        self.assertEqual(len(mix), 1000)

    def test_titles_are_kept(self):
        chunk = lambda name, data: name + struct.pack("<I", len(data)) + data
        (self.dir / "a.wav").write_bytes(chunk(b"RIFF", b"WAVE" + chunk(b"fmt ", struct.pack("<HHIIHH", 1, 1, 8000, 16000, 2, 16)) + chunk(b"data", bytes(2000)) +
                                               chunk(b"LIST", b"INFO" + chunk(b"INAM", b"A tone\0\0"))))
        self.tevs("filter", "a.wav", "b.flac", "--low", "1000")
        self.assertRegex(self.tevs("info", "b.flac").decode(), r"title +A tone\n")


class Filter(Case):
    def test_pass_and_stop(self):
        n = 48000
        for arguments, passed, stopped in ((("--low", 4000), (0, 1000, 3700), (4300, 8000, 23000)), (("--high", 300), (340, 1000, 20000), (10, 100, 260)),
                                           (("--band", "300,3400"), (400, 3300), (100, 3500, 20000)), (("--stop", "900,1100"), (10, 800, 1200, 9000), (960, 1000, 1040))):
            for hertz in passed:
                x = [0.5] * n if hertz == 0 else sine(hertz, 48000, n)
                y = self.through("filter", x, *arguments, "--width", 60 if arguments[0] != "--low" else 400)
                self.assertEqual(len(y), n)
                error = max(abs(a - b) for a, b in zip(x[8000:40000], y[8000:40000]))   # where it was: no delay
                self.assertLess(error, 2e-6, (arguments, hertz))
            for hertz in stopped:
                y = self.through("filter", sine(hertz, 48000, n), *arguments, "--width", 60 if arguments[0] != "--low" else 400)
                self.assertLess(decibels(rms(y[8000:40000]) / rms(sine(hertz, 48000, n))), -119, (arguments, hertz))

    def test_recursive(self):
        n = 48000
        for arguments, hertz, want in ((("--low", 4000), 4000, -3.0103), (("--low", 4000, "--ripple", 1), 4000, -1), (("--high", 500), 500, -3.0103),
                                       (("--band", "500,2000", "--order", 4), 2000, -3.0103), (("--stop", "500,2000", "--order", 4), 500, -3.0103),
                                       (("--low", 4000, "--order", 2), 20000, -45.7574)):
            y = self.through("filter", sine(hertz, 48000, n), "--iir", *arguments)
            self.assertAlmostEqual(decibels(rms(y[24000:]) / rms(sine(hertz, 48000, n))), want, delta=0.01, msg=str(arguments))
        y = self.through("filter", sine(6000, 48000, n), "--iir", "--low", 4000, "--width", 2000, "--attenuation", 60, "--ripple", 0.1)
        self.assertLess(decibels(rms(y[24000:]) / rms(sine(6000, 48000, n))), -60)

    def test_channels_do_not_mix(self):
        a, b = sine(500, 48000, 40000), sine(700, 48000, 40000)
        both = self.through("filter", [v for pair in zip(a, b) for v in pair], "--low", 600, "--width", 100, channels=2)
        self.assertTrue(both[0::2] == self.through("filter", a, "--low", 600, "--width", 100))
        self.assertTrue(both[1::2] == self.through("filter", b, "--low", 600, "--width", 100))

    def test_short_input(self):
        for count in (1, 2, 7):   # much shorter than the filter
            self.assertEqual(len(self.through("filter", [1.0] * count, "--low", 1000)), count)
            self.assertEqual(len(self.through("resample", [1.0] * count, "--rate", 44100)), math.ceil(count * 147 / 160))
            self.assertEqual(len(self.through("denoise", [1.0] * count)), count)
        self.assertEqual(len(self.through("filter", [], "--low", 1000)), 0)


class Resample(Case):
    def test_sines_stay_where_they_are(self):
        for rate, to in ((48000, 44100), (44100, 48000), (48000, 8000), (8000, 48000), (11025, 16000), (48000, 48001), (96000, 44100), (8000, 8000), (3, 7), (44100, 1000)):
            count, hertz = 60011 if rate > 3 else 4001, min(rate, to) * 0.11
            y = self.through("resample", sine(hertz, rate, count), "--rate", to, rate=rate)
            self.assertEqual(len(y), math.ceil(count * to / rate), (rate, to))
            edge = len(y) // 4
            want = sine(hertz, to, len(y))
            error = rms([a - b for a, b in zip(y[edge:-edge], want[edge:-edge])])
            self.assertLess(decibels(error / rms(want)), -145, (rate, to))

    def test_what_would_alias_is_gone(self):
        for rate, to, hertz in ((48000, 8000, 4000), (48000, 8000, 5000), (48000, 44100, 22100), (48000, 44100, 23900)):
            y = self.through("resample", sine(hertz, rate, 48000), "--rate", to, rate=rate)
            self.assertLess(decibels(rms(y[len(y) // 4:-len(y) // 4]) / 0.354), -145, (rate, to, hertz))
        y = self.through("resample", sine(20900, 44100, 20000), "--rate", 48000, rate=44100)   # and images of what passes: all there is, is one sine
        edge = len(y) // 4
        want = sine(20900, 48000, len(y))
        self.assertLess(decibels(rms([a - b for a, b in zip(y[edge:-edge], want[edge:-edge])]) / 0.354), -145)

    def test_same_rate_same_samples(self):
        x = [random.Random(6).uniform(-1, 1) for _ in range(1000)]
        self.assertEqual(list(self.through("resample", x, "--rate", 48000)), x)


class Measures(Case):
    def test_level(self):
        self.tevs("tone", "a.wav", "--freq", 1000, "--level", -20, "--type", "f64", "--channels", 2)
        for row in self.tevs("level", "a.wav").decode().splitlines()[1:]:
            _, peak, _, effective, loudest, quietest, mean, full = map(float, row.split())
            self.assertEqual((peak, effective, loudest, quietest, mean, full), (-20, -23.01, -23.01, -23.01, 0, 0))
        x = [0.25] * 8000 + [0.0] * 8000
        x[123] = -1.0
        row = self.tevs("level", "-", "--raw-in", "f64,8000", data=array.array("d", x).tobytes()).decode().splitlines()[1].split()
        self.assertEqual(row[1:3] + row[5:], ["0.00", "0.015", "-inf", f"{(7999 * 0.25 - 1) / 16000:.5f}", "1"])

    def test_spectrum_table(self):
        self.tevs("tone", "a.wav", "--freq", "3000,9000", "--level", -6, "--type", "f64", "--length", 0.5)
        table = [list(map(float, line.split())) for line in self.tevs("spectrum", "a.wav", "--order", 12).decode().splitlines()[1:]]
        self.assertEqual((len(table), table[0][0], table[-1][0]), (2049, 0, 24000))
        top = sorted(table, key=lambda row: -row[1])[:2]
        self.assertEqual(sorted(row[0] for row in top), [3000, 9000])
        self.assertTrue(all(abs(row[1] + 6) < 0.02 for row in top), top)
        self.assertLess(max(level for hertz, level in table if min(abs(hertz - 3000), abs(hertz - 9000)) > 500), -100)
        self.tevs("spectrum", "a.wav", "a.txt", "--order", 12)
        self.assertEqual((self.dir / "a.txt").read_text().splitlines()[1], self.tevs("spectrum", "a.wav", "--order", 12).decode().splitlines()[1])

    def test_pictures(self):
        self.tevs("tone", "a.wav", "--freq", 0, "--to", 23999, "--level", -1, "--length", 3)
        self.tevs("spectrogram", "a.wav", "a.png", "--width", 600, "--height", 400)
        width, height, rows = pixels(self.dir / "a.png")
        self.assertEqual((width, height), (600, 400))
        for part in (0.25, 0.5, 0.75):   # a line from corner to corner of the frame
            u = round(70 + part * (600 - 90 - 70))
            column = [sum(rows[v][u]) for v in range(42, 343)]
            brightest = 42 + max(range(len(column)), key=column.__getitem__)
            self.assertAlmostEqual((345 - brightest) / (345 - 40), part, delta=0.02)
        self.tevs("spectrum", "a.wav", "b.png")
        width, height, rows = pixels(self.dir / "b.png")
        self.assertEqual((width, height), (1200, 600))
        self.assertGreater(sum(p not in ((255, 255, 255), (224, 224, 224)) for row in rows for p in row), 2000)
        long = subprocess.run(f"{TEVS} tone - --freq 1000 --length 300 --raw-out s16 | {TEVS} spectrogram - c.png --raw-in s16,48000 --width 200 --height 150",
                              shell=True, cwd=self.dir)   # columns are put together, whose number nobody knew
        self.assertEqual((long.returncode, pixels(self.dir / "c.png")[:2]), (DONE, (200, 150)))


class Sounds(Case):
    def test_tone(self):
        x = array.array("d", self.tevs("tone", "-", "--freq", 997, "--rate", 44100, "--level", 0, "--raw-out", "f64", "--length", 2))
        self.assertEqual(len(x), 88200)
        self.assertLess(max(abs(a - math.sin(2 * math.pi * 997 * n / 44100)) for n, a in enumerate(x)), 1e-11)
        both = array.array("d", self.tevs("tone", "-", "--freq", "100,300", "--level", -6, "--raw-out", "f64", "--channels", 2))
        self.assertAlmostEqual(both[2 * 40 + 1], 10 ** -0.3 * (math.sin(2 * math.pi * 40 / 480) + math.sin(2 * math.pi * 3 * 40 / 480)), delta=1e-13)

    def test_sweep_ends_where_it_is_told(self):
        x = array.array("d", self.tevs("tone", "-", "--freq", 0, "--to", 20000, "--level", 0, "--raw-out", "f64", "--length", 2))
        phase = lambda n: 2 * math.pi * 20000 / 48000 * n * n / (2 * 96000)
        self.assertLess(max(abs(x[n] - math.sin(phase(n))) for n in range(96000)), 1e-7)

    def test_dial_and_detect(self):
        for rate in (8000, 11025, 44100):
            self.tevs("dial", "123A456B 789C*0#D", "a.wav", "--rate", rate)
            self.assertEqual(self.tevs("detect", "a.wav", "--digits"), b"123A456B789C*0#D\n")
        self.tevs("dial", "1159", "b.wav", "--on", 0.045, "--off", 0.045)
        self.assertEqual(self.tevs("detect", "b.wav", "--digits"), b"1159\n")
        rows = [line.split() for line in self.tevs("detect", "a.wav").decode().splitlines()[1:]]
        for k, (key, begin, length) in enumerate(rows):
            self.assertEqual(key, "123A456B789C*0#D"[k])
            self.assertAlmostEqual(float(begin), 0.1 + 0.2 * k, delta=0.015)
            self.assertAlmostEqual(float(length), 0.1, delta=0.027)

    def test_what_is_no_key(self):
        noise = random.Random(7)
        for x in ([noise.gauss(0, 0.1) for _ in range(80000)], sine(697, 8000, 8000), sine(1209, 8000, 8000), [0.0] * 8000,
                  [a + b for a, b in zip(sine(650, 8000, 8000), sine(1209, 8000, 8000))], [20 * a + b for a, b in zip(sine(697, 8000, 8000, 0.02), sine(1209, 8000, 8000, 0.02))]):
            found = self.tevs("detect", "-", "--digits", "--raw-in", "f64,8000", data=array.array("d", x).tobytes())
            self.assertEqual(found, b"\n")


class Cleaning(Case):
    def test_nothing_is_lost_without_thresholds(self):
        x = [random.Random(8).uniform(-1, 1) for _ in range(70001)]
        for levels, taps in ((1, 4), (7, 16), (10, 40)):
            y = self.through("denoise", x, "--strength", 0, "--levels", levels, "--taps", taps)
            self.assertEqual(len(y), len(x))
            self.assertLess(max(abs(a - b) for a, b in zip(x, y)), 1e-12, (levels, taps))

    def test_noise_goes(self):
        noise, rate = random.Random(9), 16000
        clean = [0.0] * rate + sine(30, rate, 2 * rate, 0.3)
        y = self.through("denoise", [v + noise.gauss(0, 0.02) for v in clean], "--noise", 0.5, rate=rate)
        self.assertLess(decibels(rms(y[:rate]) / 0.02), -15)   # all of the pause but the lowest octave
        self.assertLess(decibels(rms([a - b for a, b in zip(y[rate + 500:], clean[rate + 500:])]) / 0.02), -12)

    def test_echo(self):
        noise, rate = random.Random(10), 8000
        far = [noise.gauss(0, 0.1) for _ in range(10 * rate)]
        path = [0.0] * 40 + [0.3 * math.exp(-k / 20) * math.cos(0.9 * k) for k in range(100)]
        near = [math.fsum(h * far[n - k] for k, h in enumerate(path) if n >= k and h) for n in range(4 * rate)]
        for name, x in (("far.raw", far), ("near.raw", near)):
            self.tevs("convert", "-", name.replace("raw", "wav"), "--raw-in", f"f64,{rate}", "--type", "f64", data=array.array("d", x).tobytes())
        self.tevs("echo", "far.wav", "near.wav", "out.wav")
        out = self.samples("out.wav")
        self.assertEqual(len(out), len(near))
        self.assertLess(decibels(rms(out[-rate:]) / rms(near[-rate:])), -60)
        self.tevs("convert", "far.wav", "silence.wav", "--gain", "-1000")
        self.tevs("echo", "silence.wav", "near.wav", "same.wav")   # there is nothing to learn from
        self.assertTrue(self.samples("same.wav") == self.samples("near.wav"))


class Failures(Case):
    def setUp(self):
        super().setUp()
        self.tevs("tone", "a.wav", "--freq", 1000, "--length", 2, "--rate", 8000)
        self.tevs("convert", "a.wav", "a.flac")
        (self.dir / "text.wav").write_text("no recording\n" * 10)
        flac = (self.dir / "a.flac").read_bytes()
        (self.dir / "cut.flac").write_bytes(flac[:len(flac) // 2])
        (self.dir / "directory").mkdir()
        (self.dir / "old.wav").write_text("what was there")

    def refuses(self, code, *arguments, says=b"", **options):
        before = self.names()
        done = self.run_tevs(*arguments, **options)
        self.assertEqual(done.returncode, code, (arguments, done.stdout, done.stderr))
        self.assertIn(says, done.stderr, arguments)
        self.assertEqual(self.names(), before, arguments)
        self.assertEqual((self.dir / "old.wav").read_text(), "what was there")
        return done

    def test_bad_files(self):
        for name, says in (("none.wav", b"No such file"), ("text.wav", b"text.wav"), ("directory", b"Is a directory"), ("cut.flac", b"cut.flac")):
            done = self.refuses(FAILED, "filter", name, "old.wav", "--low", 1000, says=says)
            self.assertRegex(done.stderr, rb"\Atevs: cannot read [^\n]+\n\Z|\Atevs: cut.flac ends after \d+ of 16000 frames\n\Z")
        self.refuses(FAILED, "convert", "a.wav", "none/old.wav", says=b"cannot write none/old.wav: No such file")
        self.refuses(FAILED, "convert", "a.wav", "directory", "--raw-out", "s16", says=b"Is a directory")
        self.refuses(FAILED, "level", "-", "--raw-in", "s16,8000", says=b"no samples", data=b"")

    def test_bad_arguments(self):
        for arguments in ((), ("nothing",), ("filter", "a.wav", "old.wav"), ("filter", "a.wav", "old.wav", "--low", 4000), ("filter", "a.wav", "old.wav", "--low", 0),
                          ("filter", "a.wav", "old.wav", "--low", 100, "--high", 50), ("filter", "a.wav", "old.wav", "--band", "300,200"),
                          ("filter", "a.wav", "old.wav", "--low", 100, "--width", 1000), ("filter", "a.wav", "old.wav", "--low", "nan"),
                          ("filter", "a.wav", "old.wav", "--low", 100, "--order", 4), ("filter", "a.wav", "old.wav", "--low", 1000, "--iir", "--order", 13),
                          ("resample", "a.wav", "old.wav"), ("resample", "a.wav", "old.wav", "--rate", 0), ("convert", "a.wav", "old"), ("convert", "a.wav", "old.doc"),
                          ("convert", "a.wav", "old.wav", "--type", "s17"), ("convert", "a.wav", "old.flac", "--type", "f32"), ("convert", "a.wav", "old.wav", "--channels", "2"),
                          ("convert", "-", "old.wav", "--raw-in", "s16"), ("convert", "-", "old.wav", "--raw-in", "s16,0"), ("tone", "old.wav", "--freq", 24000),
                          ("dial", "12x", "old.wav"), ("dial", "", "old.wav"), ("denoise", "a.wav", "old.wav", "--taps", 5), ("spectrogram", "a.wav", "old.wav"),
                          ("convert", "a.wav", "old.wav", "--length", "-1"), ("echo", "a.wav", "a.wav", "old.wav", "--step", 2)):
            self.refuses(USAGE, *arguments)

    def test_times_that_no_file_lasts(self):
        self.tevs("convert", "a.wav", "all.wav", "--length", 1e300)
        self.assertTrue(self.samples("all.wav") == self.samples("a.wav"))
        self.refuses(FAILED, "convert", "a.wav", "old.wav", "--start", 1e300, says=b"a.wav ends before the start")
        self.refuses(USAGE, "echo", "a.wav", "a.wav", "old.wav", "--length", 2**32 / 8000 + 0.01, says=b"--length is too long")
        self.refuses(USAGE, "dial", "1", "old.wav", "--on", 1e300, "--off", 1e300, says=b"no year")

    def test_no_memory_for_a_picture(self):
        for megabytes in range(100, 360, 40):   # of the two that it takes, 76 MiB each, some of these refuse the second
            limited = lambda: resource.setrlimit(resource.RLIMIT_AS, (megabytes << 20, megabytes << 20))
            done = self.run_tevs("spectrogram", "a.wav", "new.png", "--width", 10000, "--height", 2000, preexec_fn=limited)
            self.assertGreaterEqual(done.returncode, 0, (megabytes, done.stderr))   # no signal

    def test_help_and_version(self):
        self.assertIn(b"filter", self.tevs("--help"))
        self.assertRegex(self.tevs("--version"), rb"\Atevs \d+\.\d+\.\d+\n\Z")

    def test_full_disk(self):
        limited = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))   # as on a disk with a page left
        for out in ("old.wav", "new.wav", "new.flac", "new.ogg", "new.aiff", "new.w64"):
            self.refuses(FAILED, "resample", "a.wav", out, "--rate", 44100, says=b"cannot write", preexec_fn=limited)
        self.refuses(FAILED, "spectrogram", "a.wav", "new.png", says=b"cannot write new.png", preexec_fn=limited)
        self.refuses(FAILED, "spectrum", "a.wav", "new.txt", says=b"cannot write new.txt: File too large", preexec_fn=limited)
        for arguments in (("convert", "a.wav", "/dev/full", "--raw-out", "s16"), ("spectrum", "a.wav", "/dev/full")):
            self.refuses(FAILED, *arguments, says=b"No space left on device")
        full = open("/dev/full", "wb")
        self.addCleanup(full.close)
        for arguments in (("level", "a.wav"), ("spectrum", "a.wav"), ("convert", "a.wav", "-"), ("info", "a.wav")):
            done = subprocess.run([TEVS, *arguments], stdout=full, stderr=subprocess.PIPE, cwd=self.dir)
            self.assertEqual((done.returncode, done.stderr[:18]), (FAILED, b"tevs: cannot write"), arguments)

    def test_interrupted(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            before = self.names()
            running = subprocess.Popen([TEVS, "filter", "-", "old.wav", "--low", "1000", "--raw-in", "s16,48000"], stdin=subprocess.PIPE, cwd=self.dir,
                                       preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
            running.stdin.write(bytes(1 << 20))
            running.stdin.flush()
            while len(self.names()) == len(before):   # until it has begun to write
                self.assertIsNone(running.poll())
                time.sleep(0.01)
            self.assertEqual((self.dir / "old.wav").read_text(), "what was there")
            running.send_signal(number)
            self.assertEqual(running.wait(), -number)
            running.stdin.close()
            self.assertEqual(self.names(), before)
            self.assertEqual((self.dir / "old.wav").read_text(), "what was there")

    def test_reader_gone(self):
        running = subprocess.Popen([TEVS, "tone", "-", "--freq", "100", "--length", "100", "--raw-out", "f64"], stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=self.dir)
        running.stdout.read(100)
        running.stdout.close()
        self.assertIn(running.wait(), (-signal.SIGPIPE, FAILED))
        running.stderr.close()


class Places(Case):
    def setUp(self):
        super().setUp()
        self.tevs("tone", "a.wav", "--freq", 1000, "--length", 2)

    def test_output_over_input(self):
        self.tevs("filter", "a.wav", "b.wav", "--high", 2000)
        self.tevs("filter", "a.wav", "a.wav", "--high", 2000)
        self.assertTrue((self.dir / "a.wav").read_bytes() == (self.dir / "b.wav").read_bytes())
        self.assertEqual(self.names(), ["a.wav", "b.wav"])

    def test_links_and_permissions(self):
        (self.dir / "target.wav").write_text("old")
        (self.dir / "target.wav").chmod(0o640)
        (self.dir / "link.wav").symlink_to("target.wav")
        self.tevs("convert", "a.wav", "link.wav")
        self.assertTrue((self.dir / "link.wav").is_symlink())
        self.assertTrue((self.dir / "target.wav").read_bytes() == (self.dir / "a.wav").read_bytes())
        self.assertEqual(stat.S_IMODE((self.dir / "target.wav").stat().st_mode), 0o640)
        before = os.umask(0o027)
        self.tevs("convert", "a.wav", "new.wav")
        os.umask(before)
        self.assertEqual(stat.S_IMODE((self.dir / "new.wav").stat().st_mode), 0o640)

    def test_pipes_give_what_files_give(self):
        for command in (("filter", "--band", "300,3400"), ("filter", "--low", "800", "--iir"), ("resample", "--rate", "44100"), ("denoise",)):
            self.tevs(command[0], "a.wav", "b.wav", *command[1:], "--type", "f64")
            done = subprocess.run(f"cat a.wav | {TEVS} {command[0]} - - {' '.join(command[1:])} | {TEVS} convert - c.wav --type f64", shell=True, cwd=self.dir)
            self.assertEqual(done.returncode, DONE)
            self.assertTrue(self.samples("b.wav") == self.samples("c.wav"), command)
        os.mkfifo(self.dir / "pipe")
        writer = subprocess.Popen([TEVS, "convert", "a.wav", "pipe", "--raw-out", "s16"], cwd=self.dir)
        self.assertEqual(self.tevs("convert", "pipe", "-", "--raw-in", "s16,48000", "--raw-out", "s16"), self.tevs("convert", "a.wav", "-", "--raw-out", "s16"))
        self.assertEqual(writer.wait(), DONE)

    def test_memory_does_not_grow(self):
        def most(arguments, seconds):
            code = ("import resource, subprocess, sys; p = subprocess.Popen(sys.argv[2:], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)\n"
                    "for _ in range(int(sys.argv[1])): p.stdin.write(bytes(4 * 48000))\n"
                    "p.stdin.close(); assert p.wait() == 0; print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)")
            return int(subprocess.run([sys.executable, "-c", code, str(seconds), TEVS, *arguments, "--raw-in", "s16,48000,2"], check=True, capture_output=True, cwd=self.dir).stdout)
        for arguments in (["filter", "-", "o.wav", "--low", "1000"], ["resample", "-", "o.wav", "--rate", "44100"], ["denoise", "-", "o.wav"], ["spectrogram", "-", "o.png"], ["detect", "-"]):
            self.assertLess(most(arguments, 400), most(arguments, 40) + 8192, arguments)   # KiB

    def test_progress_bar_on_a_terminal_alone(self):
        def errors(*quiet):
            ours, theirs = pty.openpty()
            running = subprocess.Popen([TEVS, *quiet, "convert", "-", "o.wav", "--raw-in", "s16,48000"], stdin=subprocess.PIPE, stderr=theirs, cwd=self.dir)
            running.stdin.write(bytes(1 << 18))
            running.stdin.flush()
            time.sleep(0.5)
            running.stdin.write(bytes(1 << 18))
            running.stdin.close()
            self.assertEqual(running.wait(), DONE)
            os.close(theirs)
            said = b""
            try:
                while more := os.read(ours, 4096):
                    said += more
            except OSError:
                pass
            os.close(ours)
            return said
        self.assertRegex(errors(), rb"real time.*\r\x1b\[K\Z")
        self.assertEqual(errors("-q"), b"")
        self.assertEqual(self.run_tevs("convert", "a.wav", "b.wav").stderr, b"")


class Manual(Case):
    def setUp(self):
        super().setUp()
        self.page = (SOURCE / "tevs.1").read_text()
        (self.dir / "bin").mkdir()
        (self.dir / "bin/tevs").symlink_to(TEVS)

    def test_examples(self):
        recording = pathlib.Path("/usr/share/sounds/alsa/Front_Center.wav")
        if recording.exists():
            shutil.copy(recording, self.dir / "speech.wav")
        else:
            self.tevs("tone", "speech.wav", "--freq", "300,700,1900", "--length", 1.5)
        examples = re.findall(r"^\$ (.*)$", self.page, re.M)
        self.assertGreater(len(examples), 15)
        for example in examples:
            done = subprocess.run(["bash", "-c", "set -o pipefail; PATH=$PWD/bin:$PATH; " + example], capture_output=True, cwd=self.dir)
            self.assertEqual(done.returncode, DONE, (example, done.stderr))
            self.assertNotIn(b"error", done.stderr)
            for out in re.findall(r" ([a-z0-9]+\.(?:wav|flac|png|raw))\b", example):
                self.assertGreater((self.dir / out).stat().st_size, 100, example)
        for command in self.commands():
            self.assertTrue(any(f"tevs {command} " in example for example in examples), command)

    def commands(self):
        return re.findall(r"^  ([a-z]+) ", self.tevs("--help").decode().split("Subcommands:")[1], re.M)

    def test_every_command_and_option_is_there(self):
        for command in self.commands():
            self.assertIn(f".It Cm {command} ", self.page)
            for option in re.findall(r"^  (?:-\w,)?--([a-z-]+)", self.tevs(command, "--help").decode(), re.M):
                self.assertRegex(self.page, rf"Fl -{option}\b", command)
        told = "".join(self.tevs(command, "--help").decode() for command in self.commands()) + self.tevs("--help").decode()
        for option in set(re.findall(r"Fl -([a-z-]+)", self.page)):
            self.assertIn(f"--{option}", told)

    def test_it_is_well_formed(self):
        if shutil.which("man"):
            done = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", str(SOURCE / "tevs.1")], capture_output=True, env={**os.environ, "MANWIDTH": "100"})
            self.assertEqual((done.returncode, done.stderr), (0, b""))
            self.assertIn(b"EXIT STATUS", done.stdout)

    def test_completion(self):
        def complete(*words):
            script = f'PATH=$PWD/bin:$PATH; source "{SOURCE}/tevs.bash-completion"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tevs; printf "%s\\n" "${{COMPREPLY[@]}}"'
            return subprocess.run(["bash", "-c", script, "bash", *words], capture_output=True, cwd=self.dir, text=True, check=True).stdout.split()
        (self.dir / "some.wav").touch()
        self.assertEqual(complete("tevs", "spe"), ["spectrum", "spectrogram"])
        self.assertEqual(complete("tevs", "filter", "--st"), ["--stop"])
        self.assertEqual(complete("tevs", "filter", "so"), ["some.wav"])
        self.assertEqual(complete("tevs", "convert", "a", "b", "--type", "ul"), ["ulaw"])
        self.assertEqual(set(complete("tevs", "")), set(self.commands()))


if __name__ == "__main__":
    unittest.main(verbosity=2)
