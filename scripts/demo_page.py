#!/usr/bin/env python3
"""demo_page.py DIRECTORY PROGRAM...: DIRECTORY/index.html, one self-contained page of what scripts/demo.sh made there: for each program what it printed in
64-bit, its picture and its recordings."""
import base64
import html
import pathlib
import sys

# Of each program: what it does, and the recordings that it leaves.
STEPS = {
    "recording": ("From Python: the recording is filtered, its sounds are detected, and all of it is drawn", []),
    "telephone_line": ("A recording goes through a telephone line", ["line"]),
    "telephone_codes": ("It is companded and expanded; noise is cored", ["companded", "cored"]),
    "telephone_echo": ("An echo comes back, and an adaptive filter cancels it; another equalises a modem's line", ["channel", "echo", "cancelled"]),
    "clicks": ("Clicks are put on the recording, and a median takes them off", ["clicked", "repaired"]),
    "denoise": ("Wavelets take noise off", ["noisy-wavelet", "denoised"]),
    "line_filters": ("The line's filters are designed from their edges, and measured", []),
    "dial": ("A number is dialled and detected", ["dialled", "noisy"]),
    "coded_text": ("Text goes through noise, uncoded and coded", []),
    "windows": ("Windows, by what they make of a spectral line", []),
    "formants": ("Formants of a spoken vowel, by linear prediction; the recording by coarse prediction", ["coarse"]),
    "room": ("A room is measured by correlation, and the recording played there", ["room"]),
}


def data(path, kind):
    return f"data:{kind};base64,{base64.b64encode(path.read_bytes()).decode()}"


def section(out, program):
    title, recordings = STEPS[program]
    parts = [f"<h2>{html.escape(title)}</h2>"]
    for name in recordings:
        path = out / "x86_64" / f"{name}.wav"
        parts.append(f'<p><code>{name}</code> <audio controls src="{data(path, "audio/wav")}"></audio></p>')
    parts.append(f"<pre>{html.escape((out / 'x86_64' / f'{program}.log').read_text())}</pre>")
    picture = out / f"{program}.png"
    if picture.exists():
        parts.append(f'<img alt="{html.escape(title)}" src="{data(picture, "image/png")}">')
    return "\n".join(parts)


def main():
    out, programs = pathlib.Path(sys.argv[1]), sys.argv[2:]
    body = "\n".join(section(out, p) for p in programs if p in STEPS)
    (out / "index.html").write_text(f"""<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>tevs: what it does</title>
<style>body {{ max-width: 75em; margin: 2em auto; padding: 0 1em; font-family: sans-serif; color: #222; }}
pre {{ background: #f4f4f2; padding: 1em; overflow-x: auto; }} img {{ max-width: 100%; }} audio {{ vertical-align: middle; }}</style></head><body>
<h1>tevs: what it does</h1>
<p>Small programs, the first in Python, the others in C, over one recording <audio controls src="{data(out / "input.wav", "audio/wav")}"></audio>, each in <code>examples/</code> under the name of its section's text.
Times are those of the machine that made this page, in 64-bit.</p>
{body}
</body></html>
""")


main()
