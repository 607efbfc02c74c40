"""Reads and writes a DXF file with ezdxf and prints the seconds of processor time of each: the peer of dxf_bench."""

import io
import sys
import time

import ezdxf


def best(times, work):
    taken = []
    for _ in range(times):
        start = time.process_time()
        result = work()
        taken.append(time.process_time() - start)
    return min(taken), result


def main():
    path = sys.argv[1]
    times = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    reading, drawing = best(times, lambda: ezdxf.readfile(path))
    writing, _ = best(times, lambda: drawing.write(io.StringIO()))
    print(f"ezdxf {ezdxf.__version__}")
    print(f"read {reading:.3f}")
    print(f"write {writing:.3f}")
    print(f"entities {len(drawing.modelspace())}")


main()
