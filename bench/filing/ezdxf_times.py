"""Reads and writes a drawing by ezdxf: ezdxf_times.py FILE. Prints the same lines as filing_bench."""
import sys
import time

import ezdxf


def seconds_of(work):
    start = time.perf_counter()
    result = work()
    return time.perf_counter() - start, result


source = sys.argv[1]
read, drawing = seconds_of(lambda: ezdxf.readfile(source))
print(f'read-dxf {read:.4f}')
write, _ = seconds_of(lambda: drawing.saveas(source + '.again.dxf'))
print(f'write-dxf {write:.4f}')
