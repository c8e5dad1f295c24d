"""Makes of the records a table and curves."""
import os
import re
import statistics
import subprocess

# The size that stands in the table for a row that has sizes, and what its curve shows.
CURVES = {
    "Process by name": (2000, "other processes"),
    "Discovery": (1100, "objects of the service"),
    "Calls": (100, "calls in flight"),
    "Shards at once, wall time": (32, "shards"),
    "Shards at once, computing time": (32, "shards"),
    "One shard by speed": (20, "speed"),
}
PLACES = {0: "in memory", 1: "on the disk"}


def title(record):
    row, size = record["row"], record["size"]
    if row in CURVES:
        return f"{row} ({CURVES[row][1]}: {size:,})"
    return f"{row}, {PLACES[size]}" if size is not None else row


def median(record):
    return statistics.median(record["values"])


def spread(record):
    """Half of all values lie within this part of the median."""
    if len(record["values"]) < 4:
        return "–"
    low, _, high = statistics.quantiles(record["values"], n=4)
    return f"{(high - low) / median(record):.0%}"


def amount(record):
    return f"{float(f'{median(record):.3g}'):,g} {record['unit']}"


def is_ours(record):
    return record["contender"].startswith("ours")


def in_table(record, records):
    """A row with a curve stands in the table at one size: the one above, or the largest of a run that had not that."""
    row, size = record["row"], record["size"]
    known = {other["size"] for other in records if other["row"] == row}
    return row not in CURVES or size == (CURVES[row][0] if CURVES[row][0] in known else max(known))


def lines(ours, peers):
    name = title(ours) + ours["contender"][len("ours"):]
    if not peers:
        yield f"| {name} | {amount(ours)} | | | {spread(ours)} |"
    for peer in peers:
        ratio = median(ours) / median(peer)
        yield (f"| {name} | {amount(ours)} | {peer['contender']}: {amount(peer)} | {ratio:.2f} |"
               f" {spread(ours)} / {spread(peer)} |")


def table(records):
    shown = [record for record in records if in_table(record, records)]
    text = ["| what | ours | peer | ours ÷ peer | spread |", "|---|---|---|---|---|"]
    for ours in filter(is_ours, shown):
        text += lines(ours, [peer for peer in shown if title(peer) == title(ours) and not is_ours(peer)])
    return "\n".join(text) + "\n"


def picture_name(row):
    return "performance-" + re.sub(r"\W+", "-", row.lower()) + ".svg"


def draw(row, records, folder):
    """One picture of how a row grows, drawn by gnuplot; both axes by powers of ten."""
    unit = records[0]["unit"]
    names = list(dict.fromkeys(record["contender"] for record in records))
    plots = ", ".join(f"'-' with linespoints linewidth 2 title '{name}'" for name in names)
    file = os.path.join(folder, picture_name(row))
    script = [f"set terminal svg size 640,400 background 'white'; set output '{file}'",
              f"set logscale xy; set grid; set key left top; set xlabel '{CURVES[row][1]}'; set ylabel '{unit}'",
              f"set title '{row}'; plot {plots}"]
    for name in names:
        points = sorted((record["size"], median(record)) for record in records if record["contender"] == name)
        script += [f"{size} {value}" for size, value in points] + ["e"]
    subprocess.run(["gnuplot"], input="\n".join(script), text=True, check=True)


def curves(records, folder):
    """Draws all rows that have more than one size; returns the rows drawn."""
    rows = {row: [record for record in records if record["row"] == row] for row in CURVES}
    drawn = [row for row, found in rows.items() if len({record["size"] for record in found}) > 1]
    for row in drawn:
        draw(row, rows[row], folder)
    return drawn


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        cpu = re.search(r"model name\s*:\s*(.*)", file.read())
    with open("/proc/meminfo", encoding="ascii") as file:
        memory = int(re.search(r"MemTotal:\s*(\d+)", file.read())[1]) // 2**20
    system = os.uname()
    kernel = system.release.split("-")[0]
    with open("/etc/os-release", encoding="utf-8") as file:
        release = re.search(r'PRETTY_NAME="(.*)"', file.read())[1]
    return f"{os.cpu_count()} × {cpu[1] if cpu else system.machine}, {memory} GB, {release}, Linux {kernel}"
