# Writes the two R data sets that the samples use as GeoJSON into the folder given as the first argument.
suppressPackageStartupMessages({
    library(sp)
    library(sf)
    library(spData)
    library(rnaturalearthdata)
})
folder <- commandArgs(trailingOnly = TRUE)[1]

countries <- st_as_sf(countries110)[, c("name_long", "iso_a2", "iso_a3", "continent", "subregion", "pop_est",
                                        "gdp_md_est", "income_grp")]
st_write(countries, file.path(folder, "countries.geojson"), quiet = TRUE)

towns <- urban_agglomerations[, c("urban_agglomeration", "country_or_area", "year", "population_millions")]
st_write(towns, file.path(folder, "agglomerations.geojson"), quiet = TRUE)
