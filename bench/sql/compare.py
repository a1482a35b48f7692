"""Rows of a query into LISP beside plain SQLite and Python: processor time and memory, whatever else the machine does.
compare.py FOLDER_OF_PROGRAMS DATABASE"""
import os
import sys

programs, database = sys.argv[1:]
columns = '"ix","sName","iCount","dLength","sKey","bOn","dtAt","sNote"'
statement = f"SELECT {columns} FROM Many"
fields = 100000 * 8
contenders = {
    "plain SQLite": [f"{programs}/sql_bench_plain", database, statement, "ROUNDS"],
    "Python": ["/usr/bin/python3", os.path.join(os.path.dirname(__file__), "python_rows.py"), database, statement, "ROUNDS"],
    "zb_sql": [f"{programs}/zarbo-host", os.path.join(os.path.dirname(__file__), "rows.lsp")],
}


def cost(command, rounds):
    """Seconds of the processor, and bytes at the peak."""
    child = os.fork()
    if child == 0:
        os.environ.update(ROUNDS=str(rounds), ZARBO_BENCH=database)
        os.execv(command[0], [str(rounds) if each == "ROUNDS" else each for each in command])
    _, status, used = os.wait4(child, 0)
    if status:
        sys.exit(f"{command[0]} failed")
    return used.ru_utime + used.ru_stime, used.ru_maxrss * 1024


def measured(command):
    """Milliseconds of the first call and of one behind it, bytes a field, and how far two such runs differ."""
    nothing, one, four = (cost(command, rounds) for rounds in (0, 1, 4))
    return 1e3 * (one[0] - nothing[0]), 1e3 * (four[0] - one[0]) / 3, (one[1] - nothing[1]) / fields


runs = {name: [] for name in contenders}
for _ in range(3):
    for name, command in contenders.items():
        runs[name].append(measured(command))
best = {name: [min(each) for each in zip(*all_)] for name, all_ in runs.items()}
noise = {name: max(each[0] for each in all_) / best[name][0] - 1 for name, all_ in runs.items()}
print(f"{'100,000 x 8 into a list':32} {'yardstick':>9} {'ours':>9} {'ratio':>6}   aim   noise")
rows = [("first call, ms", 0, "Python", "< 1"), ("first call, ms", 0, "plain SQLite", ""),
        ("a later call, ms", 1, "Python", "< 1"), ("a later call, ms", 1, "plain SQLite", ""),
        ("bytes a field at the peak", 2, "Python", ""), ("bytes a field at the peak", 2, "plain SQLite", "120 bytes")]
for what, place, yardstick, aim in rows:
    theirs, ours = best[yardstick][place], best["zb_sql"][place]
    print(f"{what + ' (' + yardstick + ')':40} {theirs:9.0f} {ours:9.0f} {ours / theirs:6.2f}   {aim:9} "
          f"{100 * max(noise['zb_sql'], noise[yardstick]):.0f} %")
