"""World layers (EPSG:4326): countries, large cities, time-zone cities, rivers, graticule, code tables."""

import datetime
import json
import pathlib
import re
import subprocess
import tempfile
import zoneinfo

from shapely.geometry import LineString
from shapely.ops import linemerge

from common import WGS84, geometry, gmt_lines, write_csv, write_geojson

ZONEINFO = pathlib.Path("/usr/share/zoneinfo")
ISO_CODES = pathlib.Path("/usr/share/iso-codes/json")


def r_layers():
    """Answers the features of the two R data sets by name."""
    with tempfile.TemporaryDirectory() as folder:
        script = pathlib.Path(__file__).with_name("natural_earth.R")
        subprocess.run(["Rscript", "--vanilla", str(script), folder], check=True, stderr=subprocess.DEVNULL)
        return {name: json.loads(pathlib.Path(folder, name + ".geojson").read_text())["features"]
                for name in ("countries", "agglomerations")}


def countries(features):
    """Regions with holes and several parts; unknown codes and figures (-99 in the source) become null."""
    known = lambda value: None if value in (None, "-99", -99) else value
    rows = []
    for feature in sorted(features, key=lambda feature: feature["properties"]["name_long"]):
        source = feature["properties"]
        population = known(source["pop_est"])
        gdp = known(source["gdp_md_est"])
        rows.append((feature["geometry"], {
            "Name": source["name_long"], "IsoA2": known(source["iso_a2"]), "IsoA3": known(source["iso_a3"]),
            "Continent": source["continent"], "Subregion": source["subregion"],
            "Population": None if population is None else int(population),
            "GdpMillion": None if gdp is None else float(gdp),
            "IncomeGroup": re.sub(r"^\d+\. ", "", source["income_grp"])}))
    write_geojson("world/Countries.geojson", WGS84, rows, 2)


def agglomerations(features):
    """The thirty largest cities with their populations in millions; the last figure is a projection."""
    years = (1950, 1985, 2020, 2035)
    towns = {}
    for feature in features:
        source = feature["properties"]
        if source["year"] in years:
            name = source["urban_agglomeration"].split(" (")[0]
            town = towns.setdefault(name, {"Name": name, "Country": source["country_or_area"],
                                           "at": feature["geometry"]})
            town[f"Pop{int(source['year'])}"] = round(source["population_millions"], 3)
    rows = [(town.pop("at"), town) for _, town in sorted(towns.items())]
    write_geojson("world/LargeCities.geojson", WGS84, rows, 3)
    write_csv("formats/large_cities.csv",
              [("Name", "String"), ("Country", "String"), *((f"Pop{year}", "Real") for year in years),
               ("Longitude", "CoordX"), ("Latitude", "CoordY")],
              [[town["Name"], town["Country"], *(town[f"Pop{year}"] for year in years),
                *(round(value, 3) for value in at["coordinates"])] for at, town in rows])


def iso6709(text: str):
    """Longitude and latitude in degrees of a ±DDMM±DDDMM or ±DDMMSS±DDDMMSS position."""
    def degrees(sign, digits, width):
        parts = [int(digits[:width]), int(digits[width:width + 2]), int(digits[width + 2:] or 0)]
        return (parts[0] + parts[1] / 60 + parts[2] / 3600) * (-1 if sign == "-" else 1)
    a, b, c, d = re.fullmatch(r"([+-])(\d+)([+-])(\d+)", text).groups()
    return degrees(c, d, 3), degrees(a, b, 2)


def last_change(zone: zoneinfo.ZoneInfo, year: int) -> datetime.date | None:
    """The day of the last change of standard time up to `year`; none where the rules have not changed since 1970."""
    def standard(moment):
        local = moment.astimezone(zone)
        return local.utcoffset() - local.dst()
    day = datetime.datetime(year, 7, 1, 12, tzinfo=datetime.timezone.utc)
    today = standard(day)
    while day.year >= 1970:
        day -= datetime.timedelta(days=1)
        if standard(day) != today:
            return day.date() + datetime.timedelta(days=1)
    return None


def time_zone_cities():
    """The cities that name the time zones: text, number, yes-or-no and date fields."""
    names = {}
    for row in (ZONEINFO / "iso3166.tab").read_text(encoding="utf-8").splitlines():
        if not row.startswith("#"):
            code, name = row.split("\t")
            names[code] = name
    rows = []
    for row in (ZONEINFO / "zone1970.tab").read_text(encoding="utf-8").splitlines():
        if row.startswith("#"):
            continue
        codes, position, name, *_ = row.split("\t")
        zone = zoneinfo.ZoneInfo(name)
        winter, summer = (datetime.datetime(2025, month, 1, tzinfo=zone) for month in (1, 7))
        offsets = {moment.utcoffset() for moment in (winter, summer)}
        change = last_change(zone, 2025)
        rows.append((geometry("Point", iso6709(position)), {
            "Name": name.rsplit("/", 1)[-1].replace("_", " "), "Zone": name,
            "Country": names[codes.split(",")[0]], "Countries": len(codes.split(",")),
            "UtcOffset": min(offsets).total_seconds() / 3600, "SummerTime": len(offsets) > 1,
            "LastChange": None if change is None else change.isoformat()}))
    rows.sort(key=lambda row: row[1]["Zone"])
    write_geojson("world/TimeZoneCities.geojson", WGS84, rows, 3)


def rivers():
    """Large rivers in two classes: double-lined and permanent major ones, and the longer of the additional ones."""
    rows = []
    for kind, levels, shortest in (("Major", ("-I0", "-I1"), 1.0), ("Additional", ("-I2",), 5.0)):
        lines = [LineString(points) for level in levels
                 for _, points in gmt_lines("coast", "-Rd", "-Dl", level, "-M")]
        kept = [line.simplify(0.12) for line in linemerge(lines).geoms if line.length > shortest]
        kept.sort(key=lambda line: (-round(line.length, 3), line.coords[0]))
        rows += [(geometry("LineString", list(line.coords)), {"Class": kind, "LengthDeg": round(line.length, 2)})
                 for line in kept]
    write_geojson("world/Rivers.geojson", WGS84, rows, 2)


def graticule(step: int = 30):
    """Meridians and parallels, each line with its value and its label."""
    rows = []
    for longitude in range(-180, 181, step):
        label = f"{abs(longitude)}°" + ("" if longitude in (-180, 0, 180) else "W" if longitude < 0 else "E")
        rows.append((geometry("LineString", [[longitude, latitude] for latitude in range(-90, 91, 10)]),
                     {"Kind": "Meridian", "Degrees": longitude, "Label": label}))
    for latitude in range(-90 + step, 90, step):
        label = f"{abs(latitude)}°" + ("" if latitude == 0 else "S" if latitude < 0 else "N")
        rows.append((geometry("LineString", [[longitude, latitude] for longitude in range(-180, 181, 10)]),
                     {"Kind": "Parallel", "Degrees": latitude, "Label": label}))
    write_geojson("world/Graticule.geojson", WGS84, rows, 0)


def code_tables():
    """Tables without geometry: country codes (join them to Countries by the alpha-3 code) and currencies."""
    listed = json.loads((ISO_CODES / "iso_3166-1.json").read_text(encoding="utf-8"))["3166-1"]
    write_csv("world/CountryCodes.csv",
              [("Alpha3", "String(3)"), ("Alpha2", "String(2)"), ("Numeric", "Integer"), ("Name", "String"),
               ("OfficialName", "String")],
              sorted([row["alpha_3"], row["alpha_2"], int(row["numeric"]), row["name"],
                      row.get("official_name", "")] for row in listed))
    listed = json.loads((ISO_CODES / "iso_4217.json").read_text(encoding="utf-8"))["4217"]
    write_csv("world/Currencies.csv", [("Code", "String(3)"), ("Numeric", "Integer"), ("Name", "String")],
              sorted([row["alpha_3"], int(row["numeric"]), row["name"]] for row in listed))


def derive():
    layers = r_layers()
    countries(layers["countries"])
    agglomerations(layers["agglomerations"])
    time_zone_cities()
    rivers()
    graticule()
    code_tables()
