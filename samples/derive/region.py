"""Layers of the Salish Sea region (UTM zone 10N, metres): land, lakes, coast, border, stations, sheets, labels."""

import math
import xml.etree.ElementTree as ElementTree

from shapely.geometry import LineString, MultiLineString, Point, Polygon, box, mapping
from shapely.ops import linemerge, polygonize, transform, unary_union

from common import (EAST, NORTH, SOUTH, UTM10N, WEST, WGS84, geometry, gmt, gmt_lines, topobathy, transformer,
                    write_geojson)

REGION = f"-R{WEST:g}/{EAST:g}/{SOUTH:g}/{NORTH:g}"
GWEATHER = "/usr/share/libgweather-4/Locations.xml"
SIMPLIFY = 60.0  # metres; the coast is good to about 200 m

# Names of the larger pieces of land, with a position inside each: common geographical knowledge, written down here.
LAND_NAMES = [
    ("Vancouver Island", -124.6, 49.0), ("Mainland", -122.5, 49.5), ("Mainland", -124.31, 49.874),
    ("Olympic Peninsula", -123.6, 48.05), ("Quimper Peninsula", -122.827, 48.072), ("Texada Island", -124.42, 49.66),
    ("Lasqueti Island", -124.28, 49.483), ("Hornby Island", -124.66, 49.53), ("Denman Island", -124.81, 49.55),
    ("Bowen Island", -123.37, 49.38), ("Gambier Island", -123.38, 49.50), ("Gabriola Island", -123.79, 49.16),
    ("Valdes Island", -123.66, 49.08), ("Galiano Island", -123.465, 48.935), ("Mayne Island", -123.29, 48.845),
    ("Saturna Island", -123.17, 48.79), ("Salt Spring Island", -123.50, 48.82), ("North Pender Island", -123.28, 48.77),
    ("South Pender Island", -123.209, 48.749), ("Orcas Island", -122.93, 48.66), ("San Juan Island", -123.08, 48.53),
    ("Lopez Island", -122.89, 48.48), ("Shaw Island", -122.95, 48.575), ("Whidbey Island", -122.63, 48.22),
    ("Lummi Island", -122.67, 48.7), ("Guemes Island", -122.62, 48.555), ("Cypress Island", -122.7, 48.575),
    ("Blakely Island", -122.81, 48.56), ("Waldron Island", -123.03, 48.71), ("Stuart Island", -123.19, 48.675),
    ("Decatur Island", -122.81, 48.505), ("Sidney Island", -123.31, 48.62), ("Nelson Island", -124.129, 49.715),
    ("Meares Island", -125.83, 49.17), ("Vargas Island", -125.98, 49.18), ("Keats Island", -123.46, 49.40),
    ("Anvil Island", -123.31, 49.535), ("Thetis Island", -123.68, 49.0), ("Penelakut Island", -123.647, 48.964),
    ("Marrowstone Island", -122.73, 48.057), ("Harwood Island", -124.65, 49.865), ("Hernando Island", -124.914, 49.982),
    ("Savary Island", -124.806, 49.943), ("Moresby Island", -123.313, 48.717), ("Prevost Island", -123.377, 48.83),
    ("Hardy Island", -124.193, 49.744), ("Tzartus Island", -125.083, 48.924), ("Westham Island", -123.108, 49.106),
    ("Henry Island", -123.192, 48.603), ("James Island", -123.348, 48.604), ("Sinclair Island", -122.682, 48.619),
    ("Sucia Island", -122.914, 48.759), ("Newcastle Island", -123.935, 49.191), ("Jedediah Island", -124.202, 49.501),
]

# Labels of the region: text, position, height of the letters in metres, angle in degrees, kind.
LABELS = [
    ("Pacific Ocean", -125.85, 48.52, 7500, 0, "Sea"), ("Strait of Georgia", -123.93, 49.40, 4500, -35, "Sea"),
    ("Strait of Juan de Fuca", -124.28, 48.34, 3600, -14, "Sea"), ("Haro Strait", -123.25, 48.60, 1800, -65, "Sea"),
    ("Howe Sound", -123.33, 49.45, 1600, 60, "Sea"), ("Rosario Strait", -122.755, 48.55, 1500, 80, "Sea"),
    ("Barkley Sound", -125.36, 48.81, 2000, 35, "Sea"), ("Admiralty Inlet", -122.77, 48.20, 1500, -60, "Sea"),
    ("Vancouver Island", -125.25, 49.42, 7000, -38, "Land"), ("Coast Mountains", -122.95, 49.86, 5200, -38, "Land"),
    ("Gulf Islands", -123.55, 48.99, 1900, -45, "Land"), ("San Juan Islands", -123.03, 48.62, 1700, 0, "Land"),
    ("Olympic Peninsula", -124.45, 48.05, 3600, 0, "Land"), ("Texada Island", -124.53, 49.73, 1700, -50, "Land"),
    ("Vancouver", -123.10, 49.24, 2800, 0, "Town"), ("Victoria", -123.36, 48.45, 2400, 0, "Town"),
    ("Nanaimo", -124.14, 49.13, 2000, 0, "Town"), ("Bellingham", -122.46, 48.75, 2000, 0, "Town"),
    ("Port Angeles", -123.40, 48.09, 2000, 0, "Town"), ("Tofino", -125.88, 49.10, 1800, 0, "Town"),
    ("Canada", -122.45, 49.03, 2200, 0, "Country"), ("United States", -122.45, 48.955, 2200, 0, "Country"),
]

to_utm = transformer(WGS84, UTM10N)


def projected(shape):
    """The shape in UTM metres."""
    return transform(lambda x, y: tuple(zip(*(to_utm(a, b) for a, b in zip(x, y)))), shape)


def parts(shape, kind):
    """The members of a shape that are of one kind, as a list."""
    return [part for part in getattr(shape, "geoms", [shape]) if isinstance(part, kind) and not part.is_empty]


def faces(lines):
    """The faces that lines and the frame of the region enclose (degrees)."""
    frame = LineString(box(WEST, SOUTH, EAST, NORTH).exterior.coords)
    return list(polygonize(unary_union([frame, *lines])))


def shore(level: int):
    """Shorelines of one level: 1 sea to land, 2 land to lake."""
    return [LineString(points) for header, points in gmt_lines("coast", REGION, "-Dh", "-W", "-M")
            if header.endswith(f"Level {level}")]


def border_lines():
    return [LineString(points) for _, points in gmt_lines("coast", REGION, "-Dh", "-N1", "-M")]


def on_land(points):
    """The points that GMT finds on land (lakes count as land), as a set of indices."""
    text = "".join(f"{point.x:.6f} {point.y:.6f} {index}\n" for index, point in enumerate(points))
    found = gmt("select", REGION, "-Dh", "-Ns/k/k/k/k", text=text)
    return {round(float(row.split()[2])) for row in found.splitlines()}


def land_and_lakes():
    """Land polygons with the lakes cut out, and the lakes, in degrees."""
    candidates = faces(shore(1))
    kept = on_land([face.representative_point() for face in candidates])
    lakes = [face for face in polygonize(unary_union(shore(2)))]
    water = unary_union(lakes)
    land = [part for index, face in enumerate(candidates) if index in kept
            for part in parts(face.difference(water) if face.intersects(water) else face, Polygon)]
    return land, lakes


def tidy(shape):
    """Simplified, valid, in UTM metres."""
    return projected(shape).simplify(SIMPLIFY).buffer(0)


def country_faces():
    """The two faces of the frame on either side of the border: (Canada, United States)."""
    border = linemerge(border_lines())
    seaward = LineString([(WEST - 0.1, border.coords[0][1]), border.coords[0]])  # the data end at the open sea
    canada = [face for face in faces([border, seaward]) if face.contains(Point(-125.0, 49.8))][0]
    return canada, box(WEST, SOUTH, EAST, NORTH).difference(canada)


def named_land(land):
    """(polygon in metres, properties) by falling area; pieces under 0.2 km² are left out."""
    canada, _ = country_faces()
    rows = []
    for polygon in land:
        names = [name for name, x, y in LAND_NAMES if polygon.contains(Point(x, y))]
        inside = parts(polygon.intersection(canada), Polygon)
        outside = parts(polygon.difference(canada), Polygon)
        split = [(inside, "Canada"), (outside, "United States")]
        if not names or names[0] != "Mainland":  # only the mainland is divided
            split = [([polygon], "Canada" if canada.contains(polygon.representative_point()) else "United States")]
        for pieces, country in split:
            for piece in pieces:
                shape = tidy(piece)
                for part in parts(shape, Polygon):
                    if part.area > 2e5:
                        rows.append((part, names[0] if names else None, country))
    rows.sort(key=lambda row: -row[0].area)
    return rows


def land_layers(land, lakes, relief):
    named = named_land(land)
    found = {name for _, name, _ in named}
    print("no land at:", [name for name, _, _ in LAND_NAMES if name not in found])
    write_geojson("region/Land.geojson", UTM10N, [
        (mapping(shape), {"Number": number, "Name": name, "Country": country,
                          "AreaKm2": round(shape.area / 1e6, 2), "ShoreKm": round(shape.length / 1e3, 1),
                          "Lakes": len(shape.interiors)})
        for number, (shape, name, country) in enumerate(named, 1)], 0)
    shapes = sorted((tidy(lake) for lake in lakes), key=lambda shape: -shape.area)
    write_geojson("region/Lakes.geojson", UTM10N, [
        (mapping(shape), {"Number": number, "AreaKm2": round(shape.area / 1e6, 2)})
        for number, shape in enumerate(shapes, 1)], 0)
    return named


def coast_layer():
    """One line of many parts for each kind of shore, and the border."""
    rows = []
    for kind, lines in (("Sea shore", shore(1)), ("Lake shore", shore(2)), ("Border", border_lines())):
        merged = projected(linemerge(lines)) if len(lines) > 1 else projected(lines[0])
        shape = MultiLineString([part.simplify(SIMPLIFY) for part in parts(merged, LineString)])
        rows.append((mapping(shape), {"Kind": kind, "Parts": len(shape.geoms),
                                      "LengthKm": round(shape.length / 1e3, 1)}))
    write_geojson("region/Coast.geojson", UTM10N, rows, 0)


def stations(relief):
    """Weather stations: airports, lights and automatic stations."""
    canada, _ = country_faces()
    rows = {}
    for place in ElementTree.parse(GWEATHER).getroot().iter("location"):
        latitude, longitude = map(float, place.findtext("coordinates").split())
        if not (WEST < longitude < EAST and SOUTH < latitude < NORTH):
            continue
        name = place.findtext("name").split(" Automatic Weather")[0].split(" Meteorological")[0]
        airport = "Airport" in place.findtext("name") or place.findtext("code")[0] == "K" \
            or place.findtext("code")[:2] == "CY"
        rows[place.findtext("code")] = (geometry("Point", to_utm(longitude, latitude)), {
            "Code": place.findtext("code"), "Name": name, "Kind": "Airport" if airport else "Station",
            "Country": "Canada" if canada.contains(Point(longitude, latitude)) else "United States",
            "Longitude": round(longitude, 4), "Latitude": round(latitude, 4),
            "ReliefM": round(relief.height(longitude, latitude))})
    rows = [rows[code] for code in sorted(rows)]
    write_geojson("region/Stations.geojson", UTM10N, rows, 0)
    return rows


def nearest_cell(at, points, reach=1e6):
    """The convex cell of everything nearer to `at` than to the other points, bounded at `reach` metres."""
    cell = Point(at).buffer(reach, cap_style=3)
    for other in points:
        dx, dy = other[0] - at[0], other[1] - at[1]
        length = math.hypot(dx, dy)
        if length > 0:
            dx, dy = dx / length, dy / length
            x, y = (at[0] + other[0]) / 2, (at[1] + other[1]) / 2
            far = 4 * reach
            cell = cell.intersection(Polygon([
                (x - dy * far, y + dx * far), (x + dy * far, y - dx * far),
                (x + dy * far - dx * far, y - dx * far - dy * far),
                (x - dy * far - dx * far, y + dx * far - dy * far)]))
    return cell


def station_areas(rows, named):
    """The land nearest to each station: parcels without gaps or overlaps."""
    points = [row[0]["coordinates"] for row in rows]
    land = unary_union([shape for shape, _, _ in named if shape.area > 4e6]).simplify(400).buffer(0)
    areas = []
    for shape, properties in rows:
        part = nearest_cell(shape["coordinates"], points).intersection(land)
        if not part.is_empty:
            areas.append((mapping(part), {"Code": properties["Code"], "Station": properties["Name"],
                                          "AreaKm2": round(part.area / 1e6, 1)}))
    write_geojson("region/StationAreas.geojson", UTM10N, areas, 0)


def sheets(named):
    """The land cut into map sheets of half a degree of latitude and one of longitude, and the index of the sheets."""
    index, pieces = [], []
    for row in range(4):
        for column in range(4):
            west, north = WEST + column, NORTH - row / 2
            name = f"{'ABCD'[row]}{column + 1}"
            edge = [(west + part / 10, north) for part in range(11)]
            edge += [(west + 1 - part / 10, north - 0.5) for part in range(11)]
            sheet = projected(Polygon(edge))
            clips = [(part, name_, country) for shape, name_, country in named if shape.intersects(sheet)
                     for part in parts(shape.intersection(sheet), Polygon) if part.area > 2e5]
            clips.sort(key=lambda clip: -clip[0].area)
            if not clips:
                continue
            index.append((mapping(sheet), {"TileName": name, "Objects": len(clips), "West": west,
                                           "South": north - 0.5}))
            pieces += [(mapping(part), {"TileName": name, "Name": name_, "Country": country,
                                        "AreaKm2": round(part.area / 1e6, 2)}) for part, name_, country in clips]
    write_geojson("region/SheetIndex.geojson", UTM10N, index, 0)
    write_geojson("region/SheetLand.geojson", UTM10N, pieces, 0)


def labels():
    write_geojson("region/Labels.geojson", UTM10N, [
        (geometry("Point", to_utm(x, y)), {"Text": text, "Height": height, "Angle": angle, "Kind": kind})
        for text, x, y, height, angle, kind in LABELS], 0)


def derive():
    relief = topobathy()
    land, lakes = land_and_lakes()
    named = land_layers(land, lakes, relief)
    coast_layer()
    station_areas(stations(relief), named)
    sheets(named)
    labels()
