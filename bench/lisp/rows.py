import os


def fib(n):
    return n if n < 2 else fib(n - 1) + fib(n - 2)


def row_fib():
    return fib(25)


def row_setq():
    global i
    i = 0
    for _ in range(1000000):
        i = i + 1


def row_lists():
    items = None
    for n in range(2000):
        items = ((n, n * n), items)
    found = 0
    for n in range(0, 2000, 5):
        at = items
        while at is not None:
            if at[0][0] == n:
                found += 1
                break
            at = at[1]
    for _ in range(50):
        turned, at = None, items
        while at is not None:
            turned = ((at[0][0], at[0][1] + 1), turned)
            at = at[1]
        items = turned
    return found


def row_strings():
    text, hits = "", 0
    for n in range(4000):
        text = text + str(n) + ","
    for n in range(1000):
        if (str(n) + ",") in text:
            hits += 1
    return hits


row = globals().get("row_" + os.environ["ROW"])
for _ in range(int(os.environ["TIMES"])):
    row()
