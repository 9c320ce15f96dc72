"""The same data in other formats, so that every kind of datasource has a small sample."""

import os
import shutil

from osgeo import gdal, ogr

from common import SOURCE

DATE = "2026-01-01"  # written into the files in place of today, so that the result does not change by the day


def translated(path: str, source: str, driver: str, **options):
    """Converts a GeoJSON layer of source/ into formats/<path>."""
    target = SOURCE / "formats" / path
    target.parent.mkdir(parents=True, exist_ok=True)
    if gdal.VectorTranslate(str(target), str(SOURCE / source), format=driver, **options) is None:
        raise RuntimeError(path)
    print(f"formats/{path}: {target.stat().st_size} bytes")


def shapefiles():
    """A folder of shapefiles: regions, lines and points."""
    for name, source in (("land", "region/Land.geojson"),
                         ("crossings", "ferries/Crossings.geojson"),
                         ("stations", "region/Stations.geojson")):
        translated(f"shapes/{name}.shp", source, "ESRI Shapefile",
                   layerCreationOptions=["ENCODING=UTF-8", f"DBF_DATE_LAST_UPDATE={DATE}"])


def geopackage():
    """Points, lines and an image pyramid in one file."""
    gdal.SetConfigOption("OGR_CURRENT_DATE", DATE + "T00:00:00Z")
    path = "formats/world.gpkg"
    (SOURCE / path).unlink(missing_ok=True)
    gdal.Translate(str(SOURCE / path), str(SOURCE / "world" / "Earth.jpg"), format="GPKG", width=512, height=256,
                   resampleAlg="average", outputSRS="EPSG:4326", outputBounds=(-180, 90, 180, -90),
                   creationOptions=["TILE_FORMAT=JPEG", "QUALITY=75", "RASTER_TABLE=earth", "VERSION=1.2"])
    for name in ("TimeZoneCities", "Graticule"):
        translated("world.gpkg", f"world/{name}.geojson", "GPKG", accessMode="update", layerName=name)


def coast_drawing():
    """The shores and the border as a DGN file: the level tells which they are."""
    target = SOURCE / "formats" / "coast.dgn"
    drawing = ogr.GetDriverByName("DGN").CreateDataSource(str(target))
    layer = drawing.CreateLayer("elements")
    shores = ogr.Open(str(SOURCE / "region" / "Coast.geojson"))
    for level, shore in enumerate(shores.GetLayer(0), 1):
        parts = shore.GetGeometryRef()
        for index in range(parts.GetGeometryCount()):
            element = ogr.Feature(layer.GetLayerDefn())
            element.SetField("Level", level)
            element.SetGeometry(parts.GetGeometryRef(index).Simplify(250))
            layer.CreateFeature(element)
    drawing = None
    print(f"formats/coast.dgn: {target.stat().st_size} bytes")


def derive():
    gdal.UseExceptions()
    ogr.UseExceptions()
    folder = SOURCE / "formats"
    shutil.rmtree(folder / "shapes", ignore_errors=True)
    for old in ("terminals.kml", "areas.mif", "areas.mid", "coast.dgn", "strait.vrt"):
        (folder / old).unlink(missing_ok=True)
    shapefiles()
    geopackage()
    translated("terminals.kml", "ferries/Terminals.geojson", "KML", dstSRS="EPSG:4326", reproject=True,
               datasetCreationOptions=["NameField=Name"])
    translated("areas.mif", "region/StationAreas.geojson", "MapInfo File", datasetCreationOptions=["FORMAT=MIF"])
    coast_drawing()
    os.chdir(folder)  # so that the virtual raster names its source by a relative path
    gdal.Translate("strait.vrt", "../region/Relief.tif", format="VRT", projWin=(380000, 5510000, 500000, 5400000))
    for left in SOURCE.rglob("*.aux.xml"):
        left.unlink()
