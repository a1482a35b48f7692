"""Compares the probe's texts of a million random values with the decimal module's."""
import decimal
import random
import struct
import subprocess
import sys

COUNT = 1_000_000
decimal.getcontext().prec = 400
PLACES = [decimal.Decimal(1).scaleb(-n) for n in range(11)]


def expected(value, decimals, trim):
    exact = decimal.Decimal(value)
    if exact and exact.adjusted() + 1 < -decimals:
        return "0." + "0" * decimals if decimals else "0"
    text = format(exact.quantize(PLACES[decimals], decimal.ROUND_HALF_UP), "f")
    if value == 0 and text.startswith("-"):
        text = text[1:]
    if trim and "." in text:
        text = text.rstrip("0").rstrip(".")
    return text


def random_value(source):
    kind = source.randrange(4)
    if kind == 0:  # ties
        return source.randrange(-10**6, 10**6) / 2 ** source.randrange(0, 12)
    if kind == 1:  # as drawings have them
        return source.uniform(-1e6, 1e6)
    if kind == 2:  # short decimals, which are near ties
        return round(source.uniform(-1000, 1000), source.randrange(0, 6)) + 0.0
    return source.choice((-1, 1)) * 10 ** source.uniform(-25, 40)


def main():
    source = random.Random(20)
    cases = []
    for _ in range(COUNT):
        cases.append((random_value(source), source.randrange(0, 11), source.randrange(2)))
    lines = "".join("%x %d %d\n" % (struct.unpack("<Q", struct.pack("<d", v))[0], d, t) for v, d, t in cases)
    answers = subprocess.run([sys.argv[1]], input=lines, capture_output=True, text=True, check=True).stdout.split("\n")
    misses = 0
    for (value, decimals, trim), answer in zip(cases, answers):
        wanted = expected(value, decimals, trim)
        if answer != wanted:
            misses += 1
            if misses <= 10:
                print(f"{value!r} with {decimals} places, trim {trim}: {answer}, expected {wanted}")
    print(f"{COUNT} values, {misses} misses")
    return 1 if misses or len(answers) != COUNT + 1 else 0


sys.exit(main())
