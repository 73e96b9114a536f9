#!/usr/bin/env python3
"""Times skimage.measure.marching_cubes on the fields that bench_surface_bench
writes with --dump_fields=DIR (DIR/sphere_N.f32 and DIR/sphere_N.txt), at the
level 0, the best of several runs per field, in milliseconds.

Usage: skimage_marching_cubes.py DIR [N ...]   (N defaults to 20 40 64)
"""
import sys
import time

try:
    import numpy as np
    from skimage.measure import marching_cubes
except ImportError as e:  # the module is not installed
    print(f"skimage not available: {e}")
    sys.exit(2)


def load(directory, cells):
    base = f"{directory}/sphere_{cells}"
    with open(base + ".txt") as t:
        nw, nv, nu, step = t.read().split()
    field = np.fromfile(base + ".f32", dtype="<f4").reshape(int(nw), int(nv), int(nu))
    return field, float(step)


def best_ms(field, step, min_time=0.5, min_runs=5):
    """Best and mean wall time, and mean CPU time of the process, per mesh."""
    times = []
    start = time.perf_counter()
    cpu0 = time.process_time()
    while len(times) < min_runs or time.perf_counter() - start < min_time:
        t0 = time.perf_counter()
        verts, faces, normals, values = marching_cubes(field, level=0.0, spacing=(step, step, step))
        times.append(time.perf_counter() - t0)
    cpu = (time.process_time() - cpu0) / len(times)
    return min(times) * 1e3, sum(times) / len(times) * 1e3, cpu * 1e3, len(faces), len(verts)


def main():
    if len(sys.argv) < 2:
        print(__doc__)
        return 1
    directory = sys.argv[1]
    sizes = [int(a) for a in sys.argv[2:]] or [20, 40, 64]
    for cells in sizes:
        field, step = load(directory, cells)
        best, mean, cpu, tris, verts = best_ms(field, step)
        print(f"skimage marching_cubes {cells}^3: wall best {best:.3f} ms, mean {mean:.3f} ms, "
              f"cpu {cpu:.3f} ms, {tris} triangles, {verts} vertices")
    return 0


if __name__ == "__main__":
    sys.exit(main())
