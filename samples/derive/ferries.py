"""The ferry network of the region (UTM zone 10N): terminals, crossings between them, and measured tracks.

The crossings are real; their tracks are not surveyed but computed here: the cheapest way over the water between the
shores, with a cost that keeps away from land, pulled straight where the water allows it.
"""

import heapq
import math

import numpy as np
from osgeo import gdal, ogr, osr
from shapely.geometry import LineString

from common import EAST, NORTH, SOURCE, SOUTH, UTM10N, WEST, WGS84, geometry, transformer, write_csv, write_geojson

CELL = 200.0  # metres
KEEP_OFF = 1200.0  # metres from the shore within which the cost rises
NAUTICAL_MILE = 1852.0
OPEN_WATER = (-123.6, 49.3)  # in the Strait of Georgia

# Terminals: common geographical knowledge, written down here to a hundredth of a degree or better.
TERMINALS = {
    "Tsawwassen": (-123.132, 49.007), "Swartz Bay": (-123.411, 48.690), "Duke Point": (-123.892, 49.163),
    "Horseshoe Bay": (-123.272, 49.375), "Departure Bay": (-123.955, 49.193), "Langdale": (-123.473, 49.434),
    "Snug Cove": (-123.332, 49.380), "Victoria": (-123.375, 48.420), "Port Angeles": (-123.431, 48.122),
    "Fulford Harbour": (-123.451, 48.769), "Long Harbour": (-123.445, 48.851), "Village Bay": (-123.325, 48.844),
    "Otter Bay": (-123.315, 48.800), "Sturdies Bay": (-123.315, 48.876), "Lyall Harbour": (-123.200, 48.795),
    "Earls Cove": (-124.007, 49.753), "Saltery Bay": (-124.178, 49.781), "Little River": (-124.919, 49.741),
    "Westview": (-124.529, 49.835), "Blubber Bay": (-124.621, 49.794), "Buckley Bay": (-124.847, 49.525),
    "Denman West": (-124.824, 49.534), "Crofton": (-123.637, 48.866), "Vesuvius": (-123.573, 48.881),
    "Nanaimo Harbour": (-123.933, 49.166), "Descanso Bay": (-123.858, 49.178), "French Creek": (-124.356, 49.349),
    "False Bay": (-124.349, 49.491), "Chemainus": (-123.713, 48.926), "Thetis Island": (-123.675, 48.979),
    "Anacortes": (-122.677, 48.507), "Lopez": (-122.884, 48.571), "Shaw": (-122.929, 48.584),
    "Orcas": (-122.944, 48.597), "Friday Harbor": (-123.013, 48.536), "Sidney": (-123.397, 48.643),
    "Port Townsend": (-122.759, 48.111), "Coupeville": (-122.672, 48.159), "Brentwood Bay": (-123.465, 48.577),
    "Mill Bay": (-123.555, 48.655),
}

CROSSINGS = [
    ("Tsawwassen", "Swartz Bay"), ("Tsawwassen", "Duke Point"), ("Horseshoe Bay", "Departure Bay"),
    ("Horseshoe Bay", "Langdale"), ("Horseshoe Bay", "Snug Cove"), ("Victoria", "Port Angeles"),
    ("Swartz Bay", "Fulford Harbour"), ("Swartz Bay", "Otter Bay"), ("Otter Bay", "Village Bay"),
    ("Village Bay", "Sturdies Bay"), ("Village Bay", "Long Harbour"), ("Sturdies Bay", "Tsawwassen"),
    ("Village Bay", "Lyall Harbour"), ("Earls Cove", "Saltery Bay"), ("Little River", "Westview"),
    ("Westview", "Blubber Bay"), ("Buckley Bay", "Denman West"), ("Crofton", "Vesuvius"),
    ("Nanaimo Harbour", "Descanso Bay"), ("French Creek", "False Bay"), ("Chemainus", "Thetis Island"),
    ("Anacortes", "Lopez"), ("Lopez", "Shaw"), ("Shaw", "Orcas"), ("Orcas", "Friday Harbor"),
    ("Friday Harbor", "Sidney"), ("Port Townsend", "Coupeville"), ("Brentwood Bay", "Mill Bay"),
]

# Longer ways through the water, measured in nautical miles from their first place.
TRACKS = [
    ("Strait of Georgia", ["Tsawwassen", "Horseshoe Bay", "Westview", "Little River"]),
    ("Haro Strait", ["Port Angeles", "Victoria", "Friday Harbor", "Tsawwassen"]),
    ("Gulf Islands", ["Swartz Bay", "Otter Bay", "Village Bay", "Sturdies Bay", "Tsawwassen"]),
]

to_utm = transformer(WGS84, UTM10N)


class Water:
    """Cells of water of the region with the cost of crossing each."""

    def __init__(self):
        corners = [to_utm(x, y) for x in (WEST, (WEST + EAST) / 2, EAST) for y in (SOUTH, NORTH)]
        self.west = math.floor(min(x for x, _ in corners) / CELL) * CELL
        self.north = math.ceil(max(y for _, y in corners) / CELL) * CELL
        columns = int((max(x for x, _ in corners) - self.west) / CELL) + 1
        rows = int((self.north - min(y for _, y in corners)) / CELL) + 1
        land = gdal.GetDriverByName("MEM").Create("", columns, rows, 1, gdal.GDT_Byte)
        land.SetGeoTransform((self.west, CELL, 0, self.north, 0, -CELL))
        system = osr.SpatialReference()
        system.ImportFromEPSG(UTM10N)
        land.SetProjection(system.ExportToWkt())
        shapes = ogr.Open(str(SOURCE / "region" / "Land.geojson"))
        gdal.RasterizeLayer(land, [1], shapes.GetLayer(0), burn_values=[1])
        distance = gdal.GetDriverByName("MEM").Create("", columns, rows, 1, gdal.GDT_Float32)
        gdal.ComputeProximity(land.GetRasterBand(1), distance.GetRasterBand(1), ["VALUES=1", "DISTUNITS=GEO"])
        off = distance.GetRasterBand(1).ReadAsArray().astype("float64")
        self.cost = np.where(off > 0, 1 + 4 * np.clip(1 - off / KEEP_OFF, 0, 1), np.inf)
        self.cost[~self.connected(self.cell(to_utm(*OPEN_WATER)))] = np.inf  # no lakes, no inlets cut off by the cells

    def connected(self, start):
        """The cells of water that the start can reach, as a mask."""
        reached, edge = np.zeros(self.cost.shape, dtype=bool), [start]
        reached[start] = True
        while edge:
            row, column = edge.pop()
            for near in ((row, column + 1), (row, column - 1), (row + 1, column), (row - 1, column)):
                if 0 <= near[0] < reached.shape[0] and 0 <= near[1] < reached.shape[1] and not reached[near] \
                        and np.isfinite(self.cost[near]):
                    reached[near] = True
                    edge.append(near)
        return reached

    def cell(self, point):
        """The nearest cell of water to a position in metres."""
        column, row = int((point[0] - self.west) / CELL), int((self.north - point[1]) / CELL)
        for reach in range(30):
            ring = [(row + dy, column + dx) for dy in range(-reach, reach + 1) for dx in range(-reach, reach + 1)
                    if max(abs(dx), abs(dy)) == reach and np.isfinite(self.cost[row + dy, column + dx])]
            if ring:
                return min(ring, key=lambda cell: math.hypot(cell[0] - row, cell[1] - column))
        raise RuntimeError(f"no water near {point}")

    def centre(self, cell):
        return self.west + (cell[1] + 0.5) * CELL, self.north - (cell[0] + 0.5) * CELL

    def path(self, start, goal):
        """The cheapest cells between two cells (A*)."""
        best, came = {start: 0.0}, {start: None}
        heap, done = [(0.0, start)], set()
        while heap:
            _, cell = heapq.heappop(heap)
            if cell == goal:
                cells = []
                while cell:
                    cells.append(cell)
                    cell = came[cell]
                return cells[::-1]
            if cell in done:
                continue
            done.add(cell)
            for dy, dx, step in ((0, 1, 1), (0, -1, 1), (1, 0, 1), (-1, 0, 1),
                                 (1, 1, 1.4142), (1, -1, 1.4142), (-1, 1, 1.4142), (-1, -1, 1.4142)):
                near = (cell[0] + dy, cell[1] + dx)
                if not (0 <= near[0] < self.cost.shape[0] and 0 <= near[1] < self.cost.shape[1]):
                    continue
                total = best[cell] + step * self.cost[near]
                if total < best.get(near, math.inf):
                    best[near], came[near] = total, cell
                    heapq.heappush(heap, (total + math.hypot(near[0] - goal[0], near[1] - goal[1]), near))
        raise RuntimeError("no way over the water")

    def clear(self, a, b) -> float:
        """The dearest cost on the straight way between two cells; infinite over land."""
        steps = 2 * max(abs(a[0] - b[0]), abs(a[1] - b[1]), 1)
        return max(self.cost[round(a[0] + (b[0] - a[0]) * step / steps), round(a[1] + (b[1] - a[1]) * step / steps)]
                   for step in range(steps + 1))

    def track(self, start, goal):
        """A smooth way in metres between two positions, which it keeps as its ends."""
        cells = self.path(self.cell(start), self.cell(goal))
        kept, at = [cells[0]], 0
        while at < len(cells) - 1:
            ahead = min(at + 120, len(cells) - 1)
            while ahead > at + 1:
                dearest = max(self.cost[cell] for cell in cells[at:ahead + 1])
                if self.clear(cells[at], cells[ahead]) <= dearest + 0.5:
                    break
                ahead -= 1
            kept.append(cells[ahead])
            at = ahead
        points = [start, *(self.centre(cell) for cell in kept[1:-1]), goal]
        return list(LineString(points).simplify(CELL / 2).coords)


def derive():
    water = Water()
    places = {name: to_utm(*position) for name, position in TERMINALS.items()}
    number = {name: index for index, name in enumerate(sorted(places), 1)}
    lines = [water.track(places[a], places[b]) for a, b in CROSSINGS]
    degree = {name: sum(name in pair for pair in CROSSINGS) for name in places}
    write_geojson("ferries/Crossings.geojson", UTM10N, [
        (geometry("LineString", points), {"EdgeId": index, "Name": f"{a}–{b}", "FromNode": number[a],
                                          "ToNode": number[b], "LengthKm": round(LineString(points).length / 1e3, 2)})
        for index, (points, (a, b)) in enumerate(zip(lines, CROSSINGS), 1)], 0)
    write_geojson("ferries/Terminals.geojson", UTM10N, [
        (geometry("Point", places[name]), {"NodeId": number[name], "Name": name, "Crossings": degree[name]})
        for name in sorted(places)], 0)
    rows = []
    for name, stops in TRACKS:
        points = [places[stops[0]]]
        for a, b in zip(stops, stops[1:]):
            points += water.track(places[a], places[b])[1:]
        miles, measured = 0.0, []
        for index, point in enumerate(points):
            miles += math.dist(points[index - 1], point) / NAUTICAL_MILE if index else 0.0
            measured.append(f"{point[0]:.0f} {point[1]:.0f} {miles:.2f}")
        rows.append([f"LINESTRING M ({','.join(measured)})", len(rows) + 1, name, len(stops), round(miles, 1)])
    write_csv("ferries/Tracks.csv", [("WKT", "WKT"), ("RouteId", "Integer"), ("Name", "String"), ("Stops", "Integer"),
                                     ("LengthNm", "Real")], rows)
