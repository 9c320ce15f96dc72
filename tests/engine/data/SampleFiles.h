#pragma once

#include <QString>

#include <functional>

/// Real files for tests, made through GDAL when they are asked for.
namespace SampleFiles {

/// Makes a layer of three records with the fields "name" (text), "n" (whole number), "v" (real) in a new file of the
/// GDAL driver @p driver at @p path: points (1,2), (3,4), (5,6) called "one", "two", "three".
bool makePoints(const QString &path, const char *driver, const QString &layer = "points");

/// Makes a raster of @p width by @p height cells whose values count from 0, one unit a cell, its lower left corner at
/// (100, 200). @p driver must be able to create, or is fed from memory.
bool makeRaster(const QString &path, const char *driver, int width = 8, int height = 4, int bands = 1,
                const char *pixelFormat = "Byte");

/// Writes @p bytes to a file.
bool write(const QString &path, const QByteArray &bytes);
/// The bytes of a file.
QByteArray read(const QString &path);
/// Cuts a file to @p size bytes.
bool cut(const QString &path, qint64 size);

} // namespace SampleFiles
