#!/usr/bin/env python3
"""An hour of noise and speech through a telephone line, on a cluster of this machine's processes.

    line_on_a_cluster.py FOLDER [RECORDING.wav] [--minutes 60] [--workers 1 2] [--address tcp://scheduler:8786]

Writes recordings of noise, and of the given one repeated in noise, into FOLDER/in; takes them through the line with each number of workers into FOLDER/out; prints times and
the bytes that the workers have sent to each other, and checks that every run has written the same. With an address it runs once on that cluster, which has to see FOLDER
under the same path.
"""
import argparse
import hashlib
import pathlib
import time
import wave

import dask
import numpy as np
from distributed import Client, LocalCluster

import tevs
import tevs.dask

RATE, FILES, CHUNK = 48000, 12, 60 * 48000
LOW_PASS = tevs.firwin(255, 3400, fs=RATE).astype(np.float32)


def make_recordings(folder, recording, minutes):
    """Noise by itself and speech in noise in turn, 16-bit, one channel."""
    speech = np.zeros(RATE, np.int16)
    if recording:
        with wave.open(recording, "rb") as file:
            if (file.getsampwidth(), file.getnchannels(), file.getframerate()) != (2, 1, RATE):
                raise SystemExit(f"{recording}: needs 16 bits, one channel, {RATE} Hz")
            speech = np.frombuffer(file.readframes(file.getnframes()), "<i2").astype(np.int16)
    n = minutes * 60 * RATE // FILES
    for k in range(FILES):
        x = np.random.default_rng(k).normal(0, 300, n).astype(np.int16)
        if k % 2:
            tevs.add(x, np.resize(speech, n), out=x)
        with wave.open(str(folder / f"{k:02}.wav"), "wb") as file:
            file.setparams((1, 2, RATE, 0, "NONE", ""))
            file.writeframes(x.tobytes())


def to_line(x):
    return tevs.alaw_decode(tevs.alaw_encode(tevs.convert(np.ascontiguousarray(x), np.int16)))


def through_the_line(x):
    """Low-pass, 8 kHz, A-law and back."""
    return tevs.dask.resample_poly(tevs.dask.fir(LOW_PASS, x.astype(np.float32)), 1, 6).map_blocks(to_line, dtype=np.int16)


def run(client, source, target):
    """Seconds taken, processor seconds of all workers, bytes sent between them, and a digest of all that was written."""
    target.mkdir(exist_ok=True)
    tasks = [tevs.dask.write(target / name, through_the_line(x), rate // 6) for name, (rate, x) in tevs.dask.read(source, CHUNK).items()]
    busy = -sum(client.run(time.process_time).values())
    begin = time.perf_counter()
    client.gather(client.compute(tasks))
    seconds = time.perf_counter() - begin
    busy += sum(client.run(time.process_time).values())
    sent = sum(client.run(lambda dask_worker: sum(entry["total"] for entry in dask_worker.transfer_outgoing_log)).values())
    digest = hashlib.sha256(b"".join(path.read_bytes() for path in sorted(target.glob("*.wav")))).hexdigest()
    return seconds, busy, sent, digest


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("recording", nargs="?")
    parser.add_argument("--minutes", type=int, default=60)
    parser.add_argument("--workers", type=int, nargs="+", default=[1, 2])
    parser.add_argument("--address")
    options = parser.parse_args()
    source, target = options.folder.resolve() / "in", options.folder.resolve() / "out"
    source.mkdir(parents=True, exist_ok=True)
    make_recordings(source, options.recording, options.minutes)
    digests = set()
    print("| workers | seconds | processor seconds of the workers | times real time | MB read a second a worker | MB sent between workers |\n|---:|---:|---:|---:|---:|---:|")
    for count in [None] if options.address else options.workers:
        cluster = None if options.address else LocalCluster(n_workers=count, threads_per_worker=1, dashboard_address=":0")
        with Client(options.address or cluster) as client:
            workers = len(client.scheduler_info()["workers"])
            client.run(tevs.set_threads, 1)   # also loads the library in every worker, before the clock runs
            seconds, busy, sent, digest = run(client, source, target)
        if cluster:
            cluster.close()
        digests.add(digest)
        read = sum(path.stat().st_size for path in source.glob("*.wav"))
        print(f"| {workers} | {seconds:.2f} | {busy:.2f} | {options.minutes * 60 / seconds:.0f} | {read / seconds / workers / 1e6:.1f} | {sent / 1e6:.1f} |", flush=True)
    if len(digests) != 1:
        raise SystemExit("the runs have written different recordings")
    print("all runs have written the same recordings to the bit" if len(options.workers) > 1 and not options.address else f"written to {target}")


if __name__ == "__main__":
    main()
