#pragma once

#include "engine/geometry/Rect2D.h"
#include "engine/map/TxLayerStyle.h"

#include <QColor>
#include <QList>
#include <QMap>
#include <QString>

/// What a workspace file says, as plain values: the reader makes it, the writer takes it. Texts called "unknown" hold
/// what this version does not know (see TxUnknownXml); they are written back as they were.

struct TxDataSourceRecord
{
    QString alias;
    QString path; ///< as it stands in the file: relative to the file's folder, absolute, or a connection string
    qint32 engineType = -1;
    quint32 options = 0;
    QString unknown;
};

/// A layer's looks as far as the attributes of its element say them: see plainStyle().
struct TxPlainLooks
{
    static constexpr double minimumLineWidth = 0.1, maximumLineWidth = 20;
    static constexpr double minimumSymbolSize = 1, maximumSymbolSize = 100;

    QColor line;
    QColor fill;
    double lineWidth;
    double symbolSize;

    CTxGeoStyle toGeoStyle() const { return plainStyle(line, fill, lineWidth, symbolSize); }
    /// Those most like @p style, exactly so when it is a plain one.
    static TxPlainLooks nearest(const CTxGeoStyle &style);
};

struct TxLayerRecord
{
    QString name; ///< empty for the name made from dataset and alias
    QString alias;
    QString dataset;
    bool visible = true;
    bool selectable = true;
    bool snapable = true;
    bool editable = false;
    bool editableLock = false;
    TxLayerStyle style;
    QString unknownColorset;                ///< of the style's colours
    QMap<QString, QString> unknownGeoStyle; ///< of the geoStyle and of its parts, by the element's name
    QString unknown;
};

struct TxMapRecord
{
    QString name;
    CRect2D view;
    QColor background;
    QList<TxLayerRecord> layers; ///< the topmost first
    QString unknown;
};

/// A layout or a scene.
struct TxContentRecord
{
    QString name;
    QString content;
    QString unknown;
};

struct TxWorkspaceDocument
{
    /// The version of the format that this program writes, and the newest that it reads.
    static constexpr int version = 1;

    QString name;
    QList<TxDataSourceRecord> dataSources;
    QList<TxMapRecord> maps;
    QList<TxContentRecord> layouts;
    QList<TxContentRecord> scenes;
    QString unknown;
    bool repaired = false; ///< the reader changed something, so that writing it would not give the same
};
