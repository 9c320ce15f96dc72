"""Shared helpers of the sample derivation: paths, compact GeoJSON, projections, the relief arrays."""

import json
import math
import pathlib
import subprocess
import tempfile

import numpy as np
from osgeo import osr

osr.UseExceptions()

SAMPLES = pathlib.Path(__file__).resolve().parent.parent
SOURCE = SAMPLES / "source"
MPL_SAMPLES = pathlib.Path("/usr/share/matplotlib/mpl-data/sample_data")

# The frame of the regional layers: the extent of the topobathy relief, and two whole GSHHG bins.
WEST, SOUTH, EAST, NORTH = -126.0, 48.0, -122.0, 50.0

WGS84 = 4326
UTM10N = 32610  # zone of the regional layers, metres
UTM16N = 32616  # zone of the terrain layers, metres


def transformer(source: int, target: int):
    """Answers a function (x, y) -> (x, y) between two EPSG codes, east before north."""
    systems = []
    for code in (source, target):
        system = osr.SpatialReference()
        system.ImportFromEPSG(code)
        system.SetAxisMappingStrategy(osr.OAMS_TRADITIONAL_GIS_ORDER)
        systems.append(system)
    transform = osr.CoordinateTransformation(*systems)
    return lambda x, y: transform.TransformPoint(float(x), float(y))[:2]


def gmt(*arguments: str, text: str = "") -> str:
    """Answers what a GMT command prints, given the text as its input. Runs it where its history file is no harm."""
    return subprocess.run(["gmt", *arguments, "--FORMAT_FLOAT_OUT=%.6f"], check=True, capture_output=True, text=True,
                          input=text, cwd=tempfile.gettempdir()).stdout


def gmt_lines(*arguments: str):
    """Runs a GMT dump and answers its segments as (header, [(x, y), …])."""
    segments = []
    for row in gmt(*arguments).splitlines():
        if row.startswith(">"):
            segments.append((row[1:].strip(), []))
        elif row and not row.startswith("#"):
            x, y = row.split()[:2]
            segments[-1][1].append((float(x), float(y)))
    return [segment for segment in segments if len(segment[1]) > 1]


def round_coordinates(value, digits: int):
    """Rounds nested coordinates; the last number of a 3D position is rounded to decimetres at the finest."""
    if isinstance(value, (int, float)):
        rounded = round(float(value), digits)
        return int(rounded) if digits == 0 else rounded
    return [round_coordinates(part, digits) for part in value]


def geometry(kind: str, coordinates):
    return {"type": kind, "coordinates": coordinates}


def write_geojson(path: str, epsg: int, features, digits: int):
    """Writes one compact feature a row; (geometry, properties) pairs. Coordinates are rounded to `digits`."""
    target = SOURCE / path
    target.parent.mkdir(parents=True, exist_ok=True)
    rows = []
    for shape, properties in features:
        shape = {"type": shape["type"], "coordinates": round_coordinates(shape["coordinates"], digits)}
        rows.append(json.dumps({"type": "Feature", "properties": properties, "geometry": shape},
                               ensure_ascii=False, separators=(",", ":")))
    name = target.stem
    crs = "" if epsg == WGS84 else \
        f'"crs":{{"type":"name","properties":{{"name":"urn:ogc:def:crs:EPSG::{epsg}"}}}},\n'
    target.write_text(f'{{"type":"FeatureCollection","name":"{name}",\n{crs}"features":[\n'
                      + ",\n".join(rows) + "\n]}\n", encoding="utf-8")
    print(f"{path}: {len(rows)} features, {target.stat().st_size} bytes")


def write_csv(path: str, header, rows):
    """Writes a CSV file (RFC 4180 quoting) and its .csvt of column types; header items are (name, type)."""
    import csv
    target = SOURCE / path
    target.parent.mkdir(parents=True, exist_ok=True)
    with target.open("w", newline="", encoding="utf-8") as stream:
        writer = csv.writer(stream, lineterminator="\n")
        writer.writerow([name for name, _ in header])
        writer.writerows(rows)
    target.with_suffix(".csvt").write_text(",".join(f'"{kind}"' for _, kind in header) + "\n")
    print(f"{path}: {target.stat().st_size} bytes")


class Grid:
    """A north-up grid of cell centres with bilinear look-up; `rows` runs north first."""

    def __init__(self, heights, west: float, north: float, step_x: float, step_y: float, to_grid=None):
        self.heights = heights.astype("float64")
        self.west, self.north, self.step_x, self.step_y = west, north, step_x, step_y
        self.to_grid = to_grid or (lambda x, y: (x, y))

    def height(self, x: float, y: float) -> float:
        """Bilinear height at a position in the caller's coordinates; held at the rim outside the grid."""
        x, y = self.to_grid(x, y)
        rows, columns = self.heights.shape
        i = min(max((x - self.west) / self.step_x, 0.0), columns - 1.001)
        j = min(max((self.north - y) / self.step_y, 0.0), rows - 1.001)
        a, b = int(i), int(j)
        u, v = i - a, j - b
        top = self.heights[b, a] * (1 - u) + self.heights[b, a + 1] * u
        bottom = self.heights[b + 1, a] * (1 - u) + self.heights[b + 1, a + 1] * u
        return float(top * (1 - v) + bottom * v)


EARTH_RADIUS = 6378137.0  # of EPSG:3857


def mercator(longitude: float, latitude: float):
    """Spherical Mercator metres (EPSG:3857) of a position in degrees."""
    return (EARTH_RADIUS * math.radians(longitude),
            EARTH_RADIUS * math.log(math.tan(math.pi / 4 + math.radians(latitude) / 2)))


def topobathy() -> Grid:
    """The relief of the region, heights in metres, looked up by longitude and latitude.

    The array's columns are 2 arc minutes apart, and its rows are so too on a spherical Mercator map, so it is a
    square grid in EPSG:3857. Row 0 of the file is the southernmost.
    """
    data = np.load(MPL_SAMPLES / "topobathy.npz")
    longitudes, latitudes = data["longitude"].astype("float64") - 360.0, data["latitude"].astype("float64")
    west, south = mercator(longitudes[0], latitudes[0])
    east, north = mercator(longitudes[-1], latitudes[-1])
    step_x, step_y = (east - west) / (len(longitudes) - 1), (north - south) / (len(latitudes) - 1)
    assert abs(step_x - step_y) < 0.002 * step_x, (step_x, step_y)
    return Grid(data["topo"][::-1], west, north, step_x, step_y, mercator)


def jacksboro() -> Grid:
    """The terrain of the Jacksboro fault, metres, 3 arc seconds; looked up by longitude and latitude."""
    data = np.load(MPL_SAMPLES / "jacksboro_fault_dem.npz")
    step = float(data["dx"])
    north = max(float(data["ymin"]), float(data["ymax"]))  # the file names them the wrong way round
    return Grid(data["elevation"], float(data["xmin"]) + step / 2, north - step / 2, step, step)
