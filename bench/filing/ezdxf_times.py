"""Reads and writes a drawing by ezdxf: ezdxf_times.py FILE RUNS. Prints "read" and "write" with milliseconds of the
processor, one for each run."""
import sys
import time

import ezdxf


def times(work):
    taken = []
    for _ in range(int(sys.argv[2])):
        start = time.process_time()
        result = work()
        taken.append(f"{1000 * (time.process_time() - start):.0f}")
    return " ".join(taken), result


read, drawing = times(lambda: ezdxf.readfile(sys.argv[1]))
write, _ = times(lambda: drawing.saveas(sys.argv[1] + ".again.dxf"))
print("read", read)
print("write", write)
