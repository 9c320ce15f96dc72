"""Rasters: the relief grid of the region, the terrain model, and the pictures made from them."""

import pathlib

import numpy as np
from osgeo import gdal, ogr, osr

from common import SOURCE, UTM10N, UTM16N, jacksboro, topobathy

gdal.UseExceptions()
gdal.SetConfigOption("GDAL_PAM_ENABLED", "NO")  # no .aux.xml beside the results

EARTH = "/usr/share/xplanet/images/earth.jpg"

SEA = [(-2500, (28, 62, 110)), (-1000, (48, 98, 152)), (-300, (88, 145, 192)), (-100, (130, 180, 214)),
       (-20, (170, 207, 229)), (0, (192, 221, 236))]
LAND = [(0, (128, 166, 112)), (150, (160, 187, 126)), (500, (205, 204, 152)), (1000, (196, 170, 128)),
        (1600, (170, 146, 124)), (2100, (222, 218, 214)), (2800, (255, 255, 255))]


def wkt(epsg: int) -> str:
    system = osr.SpatialReference()
    system.ImportFromEPSG(epsg)
    return system.ExportToWkt()


def in_memory(grid, epsg: int):
    """The grid as a GDAL data set in its own coordinate system."""
    rows, columns = grid.heights.shape
    dataset = gdal.GetDriverByName("MEM").Create("", columns, rows, 1, gdal.GDT_Float32)
    dataset.SetGeoTransform((grid.west - grid.step_x / 2, grid.step_x, 0, grid.north + grid.step_y / 2, 0,
                             -grid.step_y))
    dataset.SetProjection(wkt(epsg))
    dataset.GetRasterBand(1).WriteArray(grid.heights.astype("float32"))
    return dataset


def warped(grid, epsg: int, to_epsg: int, cell: float, bounds=None):
    """The grid in metres, cubic, on whole cells; without data where the source has none."""
    return gdal.Warp("", in_memory(grid, epsg), format="MEM", dstSRS=f"EPSG:{to_epsg}", xRes=cell, yRes=cell,
                     targetAlignedPixels=True, outputBounds=bounds, resampleAlg="cubic", dstNodata=-9999)


def relief(cell: float = 1000.0):
    return warped(topobathy(), 3857, UTM10N, cell)


def terrain(cell: float = 120.0):
    """The terrain model, cut to a rectangle of UTM without empty corners."""
    return warped(jacksboro(), 4326, UTM16N, cell, bounds=(732000, 4037640, 761040, 4067160))


def save(path: str, driver: str, dataset, options, world_file: str = ""):
    target = SOURCE / path
    target.parent.mkdir(parents=True, exist_ok=True)
    gdal.GetDriverByName(driver).CreateCopy(str(target), dataset, options=options)
    if world_file:
        west, width, _, north, _, height = dataset.GetGeoTransform()
        numbers = (width, 0, 0, height, west + width / 2, north + height / 2)
        target.with_suffix(world_file).write_text("".join(f"{number:.10g}\n" for number in numbers))
        system = osr.SpatialReference(dataset.GetProjection())
        system.MorphToESRI()
        target.with_suffix(".prj").write_text(system.ExportToWkt() + "\n")
    print(f"{path}: {dataset.RasterXSize} x {dataset.RasterYSize}, {target.stat().st_size} bytes")


def rounded(dataset, digits: int):
    band = dataset.GetRasterBand(1)
    heights = band.ReadAsArray()
    band.WriteArray(np.round(heights.astype("float64"), digits).astype("float32"))
    return dataset


def shade(dataset, vertical: float):
    """Light of 0 … 1 from the north-west and from above."""
    lit = gdal.DEMProcessing("", dataset, "hillshade", format="MEM", azimuth=315, altitude=45, zFactor=vertical,
                             computeEdges=True)
    return lit.ReadAsArray().astype("float64") / 255


def burned(dataset, layer: str):
    """The cells of a picture's frame that the polygons of a layer cover."""
    mask = gdal.GetDriverByName("MEM").Create("", dataset.RasterXSize, dataset.RasterYSize, 1, gdal.GDT_Byte)
    mask.SetGeoTransform(dataset.GetGeoTransform())
    mask.SetProjection(dataset.GetProjection())
    shapes = ogr.Open(str(SOURCE / layer))
    gdal.RasterizeLayer(mask, [1], shapes.GetLayer(0), burn_values=[1])
    return mask.ReadAsArray() == 1


def coloured(dataset, vertical: float):
    """A shaded relief in colours. The sharper shoreline of the land layer says which cells are land."""
    heights = dataset.ReadAsArray().astype("float64")
    outside, land = heights == -9999, burned(dataset, "region/Land.geojson")
    dataset.GetRasterBand(1).WriteArray(np.where(outside, 0, heights).astype("float32"))
    factor = 1 + np.where(land, 0.9, 0.5) * (shade(dataset, vertical) - 0.71)
    result = gdal.GetDriverByName("MEM").Create("", dataset.RasterXSize, dataset.RasterYSize, 3, gdal.GDT_Byte)
    result.SetGeoTransform(dataset.GetGeoTransform())
    result.SetProjection(dataset.GetProjection())
    for band in range(3):
        colour = np.where(land, *(np.interp(heights, [height for height, _ in ramp], [rgb[band] for _, rgb in ramp])
                                  for ramp in (LAND, SEA)))
        result.GetRasterBand(band + 1).WriteArray(np.where(outside, 255, np.clip(colour * factor, 0, 255))
                                                  .astype("uint8"))
    return result


def grey(dataset, vertical: float):
    result = gdal.GetDriverByName("MEM").Create("", dataset.RasterXSize, dataset.RasterYSize, 1, gdal.GDT_Byte)
    result.SetGeoTransform(dataset.GetGeoTransform())
    result.SetProjection(dataset.GetProjection())
    result.GetRasterBand(1).WriteArray((shade(dataset, vertical) * 255).astype("uint8"))
    return result


def derive():
    save("region/Relief.tif", "GTiff", rounded(relief(), 1), ["COMPRESS=DEFLATE", "PREDICTOR=3", "ZLEVEL=9"])
    save("region/ReliefPicture.jpg", "JPEG", coloured(relief(400.0), 3.0), ["QUALITY=85"], ".jgw")
    model = terrain()
    whole = gdal.GetDriverByName("MEM").CreateCopy("", rounded(model, 0))
    save("terrain/Jacksboro.asc", "AAIGrid", whole, ["DECIMAL_PRECISION=0"])
    save("terrain/JacksboroShade.png", "PNG", grey(model, 2.0), ["ZLEVEL=9"], ".pgw")
    earth = gdal.Translate("", EARTH, format="MEM", width=1024, height=512, resampleAlg="average",
                           outputBounds=(-180, 90, 180, -90), outputSRS="EPSG:4326")
    save("world/Earth.jpg", "JPEG", earth, ["QUALITY=75"], ".jgw")
    for left in pathlib.Path(SOURCE).rglob("*.aux.xml"):
        left.unlink()
