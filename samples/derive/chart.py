"""A chart sheet of the Gulf Islands as a mixed drawing (UTM zone 10N): points, lines, regions and texts in one set."""

import json
import math

from osgeo import gdal, ogr
from shapely.geometry import LineString, Point, Polygon, box, mapping, shape

from common import SOURCE, UTM10N, WGS84, geometry, topobathy, transformer, write_geojson
from rasters import relief
from region import parts
from terrain import contour

FRAME = box(450000, 5366000, 516000, 5422000)  # the neat line, metres
MARGIN = 2500.0
TITLE = box(451500, 5367500, 469500, 5378500)
ISOBATHS = (-50.0, -100.0, -200.0)

to_utm = transformer(WGS84, UTM10N)


class Drawing:
    """Collects the elements with their layer, colour and, for texts, height (metres) and angle (degrees)."""

    def __init__(self):
        self.elements = []

    def add(self, layer, colour, where, text=None, height=None, angle=None):
        kinds = {"Point": "Point", "LineString": "Line", "Polygon": "Region"}
        kind = "Text" if text is not None else kinds[where["type"]]
        self.elements.append((where, {"Layer": layer, "Kind": kind, "Color": colour, "Text": text, "Height": height,
                                      "Angle": angle}))

    def text(self, layer, colour, x, y, text, height, angle=0):
        self.add(layer, colour, geometry("Point", [x, y]), text, height, angle)

    def line(self, layer, colour, points):
        self.add(layer, colour, geometry("LineString", points))

    def region(self, layer, colour, polygon):
        self.add(layer, colour, mapping(polygon))


def features(path):
    for feature in json.loads((SOURCE / path).read_text(encoding="utf-8"))["features"]:
        yield shape(feature["geometry"]), feature["properties"]


def land_and_depths(drawing):
    for polygon, _ in features("region/Land.geojson"):
        for part in parts(polygon.intersection(FRAME), Polygon):
            if part.area > 3e5:
                drawing.region("LAND", "#F3E2B8", part)
    land = [polygon for polygon, _ in features("region/Land.geojson") if polygon.intersects(FRAME)]
    levels = ",".join(f"{depth:g}" for depth in ISOBATHS)
    for height, line in contour(relief(), ["NODATA=-9999", f"FIXED_LEVELS={levels}"], False):
        track = LineString([point[:2] for point in line.GetPoints()]).intersection(FRAME)
        for polygon in land:
            track = track.difference(polygon)
        for part in parts(track, LineString):
            if part.length > 4000:
                drawing.line(f"DEPTH_{-height:.0f}", "#3F7CB5", list(part.simplify(120).coords))
    stations = [point for point, _ in features("region/Stations.geojson")]
    grid = topobathy()
    to_degrees = transformer(UTM10N, WGS84)
    x0, y0, x1, y1 = FRAME.bounds
    for row in range(1, int((y1 - y0) / 5600)):
        for column in range(1, int((x1 - x0) / 5600)):
            x, y = x0 + column * 5600 + (row % 2) * 2800, y0 + row * 5600
            spot = Point(x, y)
            depth = -grid.height(*to_degrees(x, y))
            if depth > 5 and FRAME.buffer(-1500).contains(spot) and not TITLE.buffer(1500).contains(spot) \
                    and all(polygon.distance(spot) > 900 for polygon in land) \
                    and all(station.distance(spot) > 2500 for station in stations):
                drawing.text("SOUNDINGS", "#1E3F66", x - 700, y, f"{depth:.0f}", 650)


def frame_and_graticule(drawing):
    x0, y0, x1, y1 = FRAME.bounds
    drawing.line("FRAME", "#000000", list(FRAME.exterior.coords))
    drawing.line("FRAME", "#000000", list(FRAME.buffer(MARGIN, join_style=2).exterior.coords))
    for step in range(26):
        longitude, latitude = -124 + step * 0.1, 48 + step * 0.1
        meridian = LineString([to_utm(longitude, 48 + 0.05 * part) for part in range(30)]).intersection(FRAME)
        parallel = LineString([to_utm(-124 + 0.05 * part, latitude) for part in range(40)]).intersection(FRAME)
        if isinstance(meridian, LineString) and not meridian.is_empty:
            points = sorted(meridian.coords, key=lambda point: point[1])
            drawing.line("GRATICULE", "#9A9A9A", points)
            drawing.text("GRATICULE", "#555555", points[0][0] - 2500, y0 - 1650, dms(longitude, "E", "W"), 750)
        if isinstance(parallel, LineString) and not parallel.is_empty:
            points = sorted(parallel.coords)
            drawing.line("GRATICULE", "#9A9A9A", points)
            drawing.text("GRATICULE", "#555555", x0 - 850, points[0][1] - 2300, dms(latitude, "N", "S"), 750, 90)


def dms(degrees, positive, negative):
    minutes = round(abs(degrees) * 60)
    return f"{minutes // 60}°{minutes % 60:02d}'{positive if degrees >= 0 else negative}"


def stations_and_ferries(drawing):
    for line, _ in features("ferries/Crossings.geojson"):
        for part in parts(line.intersection(FRAME), LineString):
            drawing.line("FERRIES", "#B0306A", list(part.coords))
    for point, properties in features("region/Stations.geojson"):
        if FRAME.buffer(-500).contains(point):
            drawing.add("STATIONS", "#C03020", mapping(point))
            drawing.text("STATIONS", "#C03020", point.x + 500, point.y + 300, properties["Code"], 600)


def title_block(drawing):
    x0, y0, x1, y1 = TITLE.bounds
    drawing.region("TITLE", "#FFFFFF", TITLE)
    drawing.line("TITLE", "#000000", list(TITLE.exterior.coords))
    for text, up, height in (("GULF ISLANDS", 8700, 1400), ("and Haro Strait", 6700, 1100),
                             ("Depths in metres. Not for navigation", 5300, 480),
                             ("WGS 84 / UTM zone 10N", 4300, 480)):
        drawing.text("TITLE", "#000000", x0 + 800, y0 + up, text, height)
    for piece in range(4):  # the scale bar: four pieces of 2.5 km
        bar = box(x0 + 800 + piece * 2500, y0 + 1900, x0 + 800 + (piece + 1) * 2500, y0 + 2500)
        drawing.region("SCALE", "#000000" if piece % 2 == 0 else "#FFFFFF", bar)
    for kilometres in (0, 5, 10):
        drawing.text("SCALE", "#000000", x0 + 600 + kilometres * 1000, y0 + 700, f"{kilometres}", 600)
    drawing.text("SCALE", "#000000", x0 + 11900, y0 + 1900, "km", 600)
    x, y = x1 - 2200, y0 + 2200  # the north arrow
    drawing.region("NORTH", "#000000", Polygon([(x, y), (x + 900, y), (x, y + 4200)]))
    drawing.region("NORTH", "#FFFFFF", Polygon([(x, y), (x - 900, y), (x, y + 4200)]))
    drawing.line("NORTH", "#000000", [(x + 1500 * math.cos(math.radians(step * 10)),
                                       y + 1400 + 1500 * math.sin(math.radians(step * 10))) for step in range(37)])
    drawing.text("NORTH", "#000000", x - 420, y + 4500, "N", 1000)


def write_dxf(elements):
    """The same drawing as DXF; OGR keeps layer, colour and text."""
    target = SOURCE / "formats" / "gulf_islands.dxf"
    dataset = ogr.GetDriverByName("DXF").CreateDataSource(str(target))
    layer = dataset.CreateLayer("entities")
    for where, properties in elements:
        feature = ogr.Feature(layer.GetLayerDefn())
        rounded = json.dumps(where)
        feature.SetGeometry(ogr.CreateGeometryFromJson(rounded))
        feature.SetField("Layer", properties["Layer"])
        colour = properties["Color"]
        feature.SetStyleString({
            "Text": f'LABEL(f:"Arial",t:"{properties["Text"]}",s:{properties["Height"]}g,a:{properties["Angle"]},'
                    f'c:{colour},p:1)',
            "Region": f"BRUSH(fc:{colour})", "Line": f"PEN(c:{colour})", "Point": f"SYMBOL(c:{colour})"}[
                properties["Kind"]])
        layer.CreateFeature(feature)
    dataset = None
    print("formats/gulf_islands.dxf", target.stat().st_size, "bytes")


def derive():
    gdal.UseExceptions()
    ogr.UseExceptions()
    drawing = Drawing()
    land_and_depths(drawing)
    stations_and_ferries(drawing)
    frame_and_graticule(drawing)
    title_block(drawing)
    write_geojson("region/Chart.geojson", UTM10N, drawing.elements, 0)
    (SOURCE / "formats").mkdir(exist_ok=True)
    write_dxf(drawing.elements)
