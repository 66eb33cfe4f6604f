#!/usr/bin/python3
"""A bounded load test of `trellin serve` on loopback.

usage: load_test.py TRELLIN [--db FILE] [--clients 8] [--rounds 25] [--workers N]
                    [--keys TrialBalance,ItemList]

Starts the server on a free port of 127.0.0.1 and CLIENTS threads; each runs every key ROUNDS
times, one after another, as CSV, and compares each file with the CLI's CSV of the same key.
Reports failures, differences, each key's run time (from the request to the file fetched) at
the median and the 95th percentile beside the CLI's time for the same run, and the peak memory
of the server with its workers (the resident sets of the process tree, sampled every 50 ms).
Every request goes to 127.0.0.1; the test stops by itself after ROUNDS, or after 20 minutes.
"""
import argparse
import json
import os
import signal
import statistics
import subprocess
import sys
import tempfile
import threading
import time
import urllib.request

DEADLINE = time.monotonic() + 20 * 60


def tree_rss_kb(root):
    """The resident memory of `root` and every process below it, in kB."""
    children = {}
    for pid in os.listdir("/proc"):
        if not pid.isdigit():
            continue
        try:
            with open("/proc/%s/stat" % pid) as f:
                fields = f.read().rsplit(")", 1)[1].split()
            children.setdefault(int(fields[1]), []).append(int(pid))
        except OSError:
            pass
    total, todo = 0, [root]
    while todo:
        pid = todo.pop()
        todo.extend(children.get(pid, []))
        try:
            with open("/proc/%d/status" % pid) as f:
                for line in f:
                    if line.startswith("VmRSS:"):
                        total += int(line.split()[1])
        except OSError:
            pass
    return total


def call(url, body=None):
    data = None if body is None else json.dumps(body).encode()
    request = urllib.request.Request(url, data=data, method="POST" if data else "GET",
                                     headers={"Content-Type": "application/json"})
    with urllib.request.urlopen(request, timeout=120) as answer:
        return answer.read()


def percentile(values, share):
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(round(share * (len(ordered) - 1))))]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("trellin")
    parser.add_argument("--db", default=None)
    parser.add_argument("--clients", type=int, default=8)
    parser.add_argument("--rounds", type=int, default=25)
    parser.add_argument("--workers", type=int, default=None)
    parser.add_argument("--keys", default="TrialBalance,ItemList")
    args = parser.parse_args()
    keys = args.keys.split(",")
    db = ["--db", args.db] if args.db else []

    with tempfile.TemporaryDirectory() as tmp:
        # The CLI's file and time for each key: the median of five runs.
        expected, cli_seconds = {}, {}
        for key in keys:
            out = os.path.join(tmp, key + ".csv")
            times = []
            for _ in range(5):
                start = time.monotonic()
                subprocess.run([args.trellin, "run", key, *db, "-o", out], check=True,
                               stdout=subprocess.DEVNULL)
                times.append(time.monotonic() - start)
            cli_seconds[key] = statistics.median(times)
            with open(out, "rb") as f:
                expected[key] = f.read()

        command = [args.trellin, "serve", *db, "--port", "0", "--queue", "1000"]
        if args.workers:
            command += ["--workers", str(args.workers)]
        server = subprocess.Popen(command, stdout=subprocess.PIPE, text=True,
                                  env=dict(os.environ, TMPDIR=tmp))
        url = server.stdout.readline().split()[2].rstrip("/")

        peak = [0]
        sampling = [True]

        def sample():
            while sampling[0]:
                peak[0] = max(peak[0], tree_rss_kb(server.pid))
                time.sleep(0.05)

        sampler = threading.Thread(target=sample)
        sampler.start()

        lock = threading.Lock()
        seconds = {key: [] for key in keys}
        failures = []

        def client(number):
            for round_number in range(args.rounds):
                for key in keys:
                    if time.monotonic() > DEADLINE:
                        return
                    start = time.monotonic()
                    try:
                        run = json.loads(call(url + "/api/runs", {"key": key, "formats": ["csv"]}))
                        while run["state"] in ("queued", "running"):
                            time.sleep(0.05)
                            run = json.loads(call(url + "/api/runs/" + run["id"]))
                        if run["state"] != "done":
                            raise RuntimeError("%s ended %s: %s" % (key, run["state"], run.get("error")))
                        csv = call(url + "/api/runs/%s/files/csv" % run["id"])
                        if csv != expected[key]:
                            raise RuntimeError("%s: the CSV differs from the CLI's" % key)
                        with lock:
                            seconds[key].append(time.monotonic() - start)
                    except Exception as e:  # every failure counts, whatever its kind
                        with lock:
                            failures.append("client %d round %d: %s" % (number, round_number, e))

        began = time.monotonic()
        clients = [threading.Thread(target=client, args=(n,)) for n in range(args.clients)]
        for thread in clients:
            thread.start()
        for thread in clients:
            thread.join()
        wall = time.monotonic() - began
        sampling[0] = False
        sampler.join()
        server.send_signal(signal.SIGTERM)
        stopped = server.wait(timeout=60)

    runs = sum(len(v) for v in seconds.values())
    print("%d clients x %d rounds x %d keys: %d runs done, %d failures, %.1f s wall-clock, "
          "%.1f runs a second" % (args.clients, args.rounds, len(keys), runs, len(failures), wall,
                                  runs / wall if wall else 0))
    for key in keys:
        if seconds[key]:
            print("  %-20s p50 %.2f s  p95 %.2f s  (CLI alone %.2f s)" % (
                key, percentile(seconds[key], 0.5), percentile(seconds[key], 0.95),
                cli_seconds[key]))
    print("  peak memory of the server and its workers: %.0f MB" % (peak[0] / 1024))
    print("  server exit code after SIGTERM: %d" % stopped)
    for failure in failures[:10]:
        print("  FAILED", failure)
    return 1 if failures or stopped != 0 else 0


if __name__ == "__main__":
    sys.exit(main())
