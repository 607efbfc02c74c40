#!/bin/sh
# Reads one large DXF file with the program's reader and with ezdxf and prints the ratios (of processor
# time, which other work on the machine disturbs less).
#     bench/run_dxf.sh [BUILD_DIRECTORY]       build/release unless given
# PYTHON names the interpreter that has ezdxf (default /usr/bin/python3).
set -e
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../build/release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$build/bench/dxf_bench" --make "$work/big.dxf"
"$build/bench/dxf_bench" --file "$work/big.dxf" --benchmark_format=json >"$work/ours.json"
"${PYTHON:-/usr/bin/python3}" "$here/ezdxf_peer.py" "$work/big.dxf" >"$work/theirs.txt"
"${PYTHON:-/usr/bin/python3}" - "$work" <<'END'
import json, os, sys
work = sys.argv[1]
ours = {b["name"]: b for b in json.load(open(work + "/ours.json"))["benchmarks"]}
ms = {name: b["cpu_time"] for name, b in ours.items()}
theirs = dict(line.split() for line in open(work + "/theirs.txt"))
read, write = ms["read_drawing"], ms["write_drawing/version:1"]
print(f"file             {os.path.getsize(work + '/big.dxf') / 1e6:8.1f} MB")
print(f"getline scan     {ms['scan_with_getline']:8.1f} ms")
print(f"memchr scan      {ms['scan_with_memchr']:8.1f} ms")
print(f"read             {read:8.1f} ms   {read / ms['scan_with_getline']:.2f} x getline, "
      f"{read / ms['scan_with_memchr']:.2f} x memchr")
print(f"write R2000      {write:8.1f} ms")
print(f"ezdxf read       {float(theirs['read']) * 1000:8.1f} ms   {float(theirs['read']) * 1000 / read:.1f} x ours")
print(f"ezdxf write      {float(theirs['write']) * 1000:8.1f} ms   {float(theirs['write']) * 1000 / write:.1f} x ours")
print(f"peak memory      {ours['read_drawing']['peak/file']:8.2f} x the file")
END
