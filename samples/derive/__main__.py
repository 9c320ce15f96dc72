"""Derives samples/source from free data sets that Debian packages carry; see samples/ORIGIN.md.

Only needed to derive the files anew: they are kept in the repository. Run as `python3 samples/derive [PART…]` with
the system's Python 3.11 after

    apt-get install gdal-bin python3-gdal python3-numpy python3-shapely gmt gmt-gshhg-low gmt-gshhg-high \\
        python-matplotlib-data xplanet-images iso-codes tzdata libgweather-4-common \\
        r-base-core r-cran-sf r-cran-spdata r-cran-rnaturalearthdata
"""

import importlib
import sys

PARTS = ("world", "region", "ferries", "rasters", "terrain", "chart", "formats")

for part in sys.argv[1:] or PARTS:
    importlib.import_module(part).derive()
