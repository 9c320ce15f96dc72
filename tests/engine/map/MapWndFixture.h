#pragma once

#include "engine/data/DatasetVector.h"
#include "engine/map/TxMapWnd.h"
#include "engine/map/TxWorkspace.h"
#include "tests/engine/map/MapTestData.h"

#include <QImage>
#include <QTest>

#include <cmath>
#include <initializer_list>

/// A window of 400 x 300 that shows a map over files of known content.
class MapWndFixture : public testing::Test
{
protected:
    /// What is seen at a place of the map.
    struct Seen
    {
        double x, y;
        QColor color;
        const char *what = "";
    };

    static inline const QColor paper{Qt::white}, red{0xff, 0, 0}, blue{0, 0, 0xff};

    void SetUp() override
    {
        map = workspace.GetMaps().Add("Map");
        map->SetBackground(paper);
        wnd.resize(400, 300);
        wnd.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&wnd));
    }

    static TxLayerStyle style(const QColor &fill, const QColor &line, double lineWidth = 3)
    {
        TxLayerStyle style;
        style.geoStyle = plainStyle(line, fill, lineWidth, 12);
        return style;
    }

    /// Opens the file @p path under @p alias and puts a layer of it on top.
    CTxLayer *add(const QString &path, const char *alias, const TxLayerStyle &style)
    {
        EXPECT_TRUE(workspace.GetDataSources().Open(path, alias));
        CTxLayer *layer = addLayer(*map, workspace.GetDataSources(), alias);
        layer->setStyle(style);
        return layer;
    }
    CTxLayer *add(const QString &path, const char *alias) { return add(path, alias, style(red, blue)); }

    /// The dataset of a file of @p side times @p side points, whose drawing has begun and takes a while.
    CDatasetVector *beginDrawing(int side)
    {
        add(data.writeGrid("grid", side), "grid");
        wnd.SetMap(map);
        EXPECT_TRUE(QTest::qWaitFor([this] { return vector("grid")->GetRecordsetCount() == 1; }, 5000));
        return vector("grid");
    }
    /// Waits for the drawing to end.
    bool waitForDrawing()
    {
        return QTest::qWaitFor([this] { return !wnd.IsDrawing(); }, 20000);
    }

    void refresh()
    {
        wnd.Refresh();
        wnd.FinishDrawing();
        picture = wnd.grab().toImage();
    }

    /// Shows the map from (-5, -5) to (15, 15) and draws it.
    void draw()
    {
        wnd.SetMap(map);
        wnd.SetViewBounds(CRect2D(-5, -5, 15, 15));
        wnd.FinishDrawing();
        picture = wnd.grab().toImage();
    }

    static bool isNear(const QColor &a, const QColor &b, int most = 8)
    {
        return std::abs(a.red() - b.red()) <= most && std::abs(a.green() - b.green()) <= most &&
               std::abs(a.blue() - b.blue()) <= most;
    }

    QColor at(double x, double y) const
    {
        const QPointF pixel = wnd.MapToPixel(CPoint2D(x, y)) * picture.devicePixelRatio();
        return picture.pixelColor(QPoint(int(std::floor(pixel.x())), int(std::floor(pixel.y()))));
    }

    void expect(std::initializer_list<Seen> places) const
    {
        for (const Seen &place : places)
            EXPECT_TRUE(isNear(at(place.x, place.y), place.color))
                << place.x << ", " << place.y << ' ' << place.what << ": " << qPrintable(at(place.x, place.y).name());
    }

    CDatasetVector *vector(const char *alias)
    {
        return dynamic_cast<CDatasetVector *>(workspace.GetDataSources().find(alias)->GetDatasetAt(0));
    }

    MapTestData data;
    CTxWorkspace workspace;
    CTxMap *map = nullptr;
    CTxMapWnd wnd;
    QImage picture;
};
