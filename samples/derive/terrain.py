"""Three-dimensional layers of the terrain model (UTM zone 16N): contours, summits, ridges, labels and a TIN."""

import numpy as np
from osgeo import gdal, ogr
from shapely.geometry import MultiPoint, Polygon
from shapely.ops import triangulate

from common import UTM16N, Grid, geometry, write_geojson
from rasters import terrain

CONTOUR_STEP = 100.0
STEP_HEIGHTS = (700.0, 800.0, 900.0)
SUMMIT_REACH = 12  # cells within which a summit is the highest
SUMMIT_HEIGHT = 700.0
TIN_POINTS = 850
TIN_SPACING = 4  # cells, the least between two points
def smoothed(heights):
    """Each height averaged with its eight neighbours, so that contours do not follow single cells."""
    padded = np.pad(heights, 1, mode="edge")
    rows, columns = heights.shape
    return sum(padded[dy:dy + rows, dx:dx + columns] for dy in range(3) for dx in range(3)) / 9


def contour(dataset, options, area: bool):
    """GDAL's contours of a data set as OGR geometries with their height (of the lower side for areas)."""
    memory = ogr.GetDriverByName("Memory").CreateDataSource("")
    layer = memory.CreateLayer("", geom_type=ogr.wkbPolygon if area else ogr.wkbLineString)
    for name in ("low", "high"):
        layer.CreateField(ogr.FieldDefn(name, ogr.OFTReal))
    fields = ["ELEV_FIELD_MIN=0", "ELEV_FIELD_MAX=1", "POLYGONIZE=YES"] if area else ["ELEV_FIELD=0"]
    gdal.ContourGenerateEx(dataset.GetRasterBand(1), layer, options=[*options, *fields])
    return [(feature.GetField(0), feature.GetGeometryRef().Clone()) for feature in layer]


def contours(dataset):
    """Lines at their own height; short rings are left out."""
    rows = []
    for height, shape in contour(dataset, [f"LEVEL_INTERVAL={CONTOUR_STEP}"], False):
        if shape.Length() > 3000:
            points = [[x, y, height] for x, y, *_ in shape.Simplify(60).GetPoints()]
            rows.append((geometry("LineString", points), {
                "HeightM": round(height), "Thick": height % 500 == 0, "LengthKm": round(shape.Length() / 1e3, 2)}))
    rows.sort(key=lambda row: (row[1]["HeightM"], -row[1]["LengthKm"]))
    write_geojson("terrain/Contours3D.geojson", UTM16N, rows, 0)


def steps(dataset):
    """The areas above some heights, holes included, as flat regions at that height."""
    rows = []
    for height in STEP_HEIGHTS:
        for low, shape in contour(dataset, [f"FIXED_LEVELS={height}"], True):
            if low < height:
                continue
            for index in range(shape.GetGeometryCount()):
                polygon = shape.GetGeometryRef(index)
                if polygon.GetArea() < 4e5:
                    continue
                polygon = polygon.SimplifyPreserveTopology(40)
                rings = [polygon.GetGeometryRef(ring).GetPoints() for ring in range(polygon.GetGeometryCount())]
                rings = [[[x, y, height] for x, y, *_ in ring] for ring in rings]
                rows.append((geometry("Polygon", rings), {
                    "HeightM": round(height), "AreaKm2": round(polygon.GetArea() / 1e6, 2)}))
    rows.sort(key=lambda row: (row[1]["HeightM"], -row[1]["AreaKm2"]))
    write_geojson("terrain/Steps3D.geojson", UTM16N, rows, 0)


def summits(grid):
    """The highest cells of their surroundings, as points and as labels that stand 60 m above them."""
    heights = grid.heights
    rows, found = [], []
    for row in range(SUMMIT_REACH, heights.shape[0] - SUMMIT_REACH):
        for column in range(SUMMIT_REACH, heights.shape[1] - SUMMIT_REACH):
            around = heights[row - SUMMIT_REACH:row + SUMMIT_REACH + 1,
                             column - SUMMIT_REACH:column + SUMMIT_REACH + 1]
            alone = all(max(abs(row - r), abs(column - c)) > SUMMIT_REACH for r, c in found)  # none of equal height
            if alone and heights[row, column] >= SUMMIT_HEIGHT and heights[row, column] == around.max():
                found.append((row, column))
                rows.append((heights[row, column], grid.west + column * grid.step_x, grid.north - row * grid.step_y))
    rows.sort(reverse=True)
    write_geojson("terrain/Summits3D.geojson", UTM16N, [
        (geometry("Point", [x, y, height]), {"Rank": rank, "HeightM": round(height)})
        for rank, (height, x, y) in enumerate(rows, 1)], 0)
    write_geojson("terrain/SummitLabels3D.geojson", UTM16N, [
        (geometry("Point", [x, y, height + 60]), {"Text": f"{height:.0f} m", "Height": 350, "Angle": 0})
        for height, x, y in rows[:25]], 0)


def tin(grid):
    """A Delaunay TIN of TIN_POINTS points, refined in rounds where it errs most. Prints its errors."""
    rows, columns = grid.heights.shape
    chosen = {(row, column) for row in np.linspace(0, rows - 1, 10).astype(int).tolist()
              for column in np.linspace(0, columns - 1, 10).astype(int).tolist()}
    while True:
        triangles = triangulate(MultiPoint(sorted(chosen)))
        worst = sorted((largest_error(triangle.exterior.coords[:3], grid.heights) for triangle in triangles),
                       key=lambda pair: -pair[0])
        if len(chosen) >= TIN_POINTS:
            break
        room = min(len(chosen) + 20, TIN_POINTS)
        before = len(chosen)
        for _, cell in worst:
            cell = (at_rim(cell[0], rows), at_rim(cell[1], columns))
            if len(chosen) < room and all(abs(cell[0] - row) + abs(cell[1] - column) >= TIN_SPACING
                                          for row, column in chosen):
                chosen.add(cell)
        if len(chosen) == before:
            break
    print(f"TIN of {len(chosen)} points, largest error {worst[0][0]:.0f} m, "
          f"half of the triangles below {worst[len(worst) // 2][0]:.0f} m")
    faces = []
    for triangle in sorted(triangles, key=lambda shape: shape.bounds):
        ring = [(grid.west + column * grid.step_x, grid.north - row * grid.step_y, grid.heights[int(row), int(column)])
                for row, column in triangle.exterior.coords]
        if not Polygon([(x, y) for x, y, _ in ring]).exterior.is_ccw:
            ring.reverse()
        faces.append([ring])
    write_geojson("terrain/Tin.geojson", UTM16N, [
        (geometry("MultiPolygon", faces), {"Points": len(chosen), "Triangles": len(faces)})], 0)


def at_rim(index, count):
    """The index, moved to the rim of the grid where it is nearly there: slivers along the rim are of no use."""
    return 0 if index < TIN_SPACING else count - 1 if index >= count - TIN_SPACING else index


def largest_error(corners, heights):
    """The cell inside a triangle of cells that is furthest from its plane: (error, cell)."""
    (r0, c0), (r1, c1), (r2, c2) = [(int(row), int(column)) for row, column in corners]
    rows, columns = np.mgrid[min(r0, r1, r2):max(r0, r1, r2) + 1, min(c0, c1, c2):max(c0, c1, c2) + 1]
    area = (r1 - r0) * (c2 - c0) - (r2 - r0) * (c1 - c0)
    if area == 0:
        return 0.0, (r0, c0)
    u = ((rows - r0) * (c2 - c0) - (r2 - r0) * (columns - c0)) / area
    v = ((r1 - r0) * (columns - c0) - (rows - r0) * (c1 - c0)) / area
    inside = (u >= 0) & (v >= 0) & (u + v <= 1)
    plane = heights[r0, c0] + u * (heights[r1, c1] - heights[r0, c0]) + v * (heights[r2, c2] - heights[r0, c0])
    error = np.where(inside, np.abs(heights[rows, columns] - plane), 0)
    at = np.unravel_index(int(error.argmax()), error.shape)
    return float(error[at]), (int(rows[at]), int(columns[at]))


def derive():
    dataset = terrain()
    west, step, _, north, _, _ = dataset.GetGeoTransform()
    heights = np.round(dataset.ReadAsArray().astype("float64"))
    grid = Grid(heights, west + step / 2, north - step / 2, step, step)
    summits(grid)
    tin(Grid(np.round(smoothed(heights)), grid.west, grid.north, step, step))
    dataset.GetRasterBand(1).WriteArray(smoothed(heights).astype("float32"))
    contours(dataset)
    steps(dataset)
