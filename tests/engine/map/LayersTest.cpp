#include "engine/map/TxLayerStyle.h"
#include "engine/map/TxLayers.h"
#include "engine/map/TxLytStorages.h"
#include "engine/map/TxMaps.h"
#include "engine/map/TxScenes.h"

#include <gtest/gtest.h>

namespace {

QString names(const CTxLayers &layers)
{
    QStringList list;
    for (int i = 0; i < layers.GetCount(); ++i)
        list.append(layers.GetLayerAt(i)->GetName());
    return list.join(u' ');
}

CTxLayer *add(CTxLayers &layers, const char *dataset)
{
    return layers.Add(std::make_unique<CTxLayer>(nullptr, "w", QString::fromUtf8(dataset)));
}

TEST(Layers, NewOnesComeOnTopUnderUniqueNames)
{
    CTxLayers layers;
    for (const char *dataset : {"a", "b", "a", "A"})
        add(layers, dataset);
    EXPECT_EQ(names(layers), u"A@w_2 a@w_1 b@w a@w");
    EXPECT_EQ(layers.GetLayerIndex("B@W"), 2);
    EXPECT_EQ(layers.GetLayerIndex("c"), -1);
    EXPECT_EQ(layers.FindLayer(nullptr), -1);
    EXPECT_EQ(layers.GetLayerAt(0)->GetDataset(), nullptr);
    EXPECT_EQ(layers.Add(nullptr), nullptr);
}

TEST(Layers, MoveKeepsTheOrderOfTheOthers)
{
    struct Row
    {
        int from, to;
        bool ok;
        const char16_t *after;
    };
    const Row rows[] = {{0, 3, true, u"c@w b@w a@w d@w"},  {3, 0, true, u"a@w d@w c@w b@w"},
                        {1, 2, true, u"d@w b@w c@w a@w"},  {2, 2, true, u"d@w c@w b@w a@w"},
                        {0, 4, false, u"d@w c@w b@w a@w"}, {-1, 0, false, u"d@w c@w b@w a@w"}};
    for (const Row &row : rows) {
        CTxLayers layers;
        for (const char *dataset : {"a", "b", "c", "d"})
            add(layers, dataset);
        EXPECT_EQ(layers.Move(row.from, row.to), row.ok);
        EXPECT_EQ(names(layers), row.after) << row.from << " to " << row.to;
    }
}

TEST(Layers, OneLayerIsEditedAtMostAndNoLockedOne)
{
    CTxLayers layers;
    for (const char *dataset : {"a", "b", "c"})
        add(layers, dataset);
    EXPECT_EQ(layers.GetEditableLayer(), nullptr);
    EXPECT_TRUE(layers.SetEditableLayer(0));
    EXPECT_TRUE(layers.SetEditableLayer(2));
    EXPECT_EQ(layers.GetEditableLayer(), layers.GetLayerAt(2));
    EXPECT_FALSE(layers.GetLayerAt(0)->IsEditable());
    layers.GetLayerAt(1)->SetEditableLock(true);
    for (const int refused : {1, 3, -2})
        EXPECT_FALSE(layers.SetEditableLayer(refused));
    EXPECT_EQ(layers.GetEditableLayer(), layers.GetLayerAt(2)) << "a refusal changes nothing";
    EXPECT_TRUE(layers.Remove(2));
    EXPECT_EQ(layers.GetEditableLayer(), nullptr);
    EXPECT_TRUE(layers.SetEditableLayer(-1));
}

TEST(Maps, KeepTheirOrderWhenRenamed)
{
    CTxMaps maps;
    CTxMap *a = maps.Add("a");
    maps.Add("b");
    EXPECT_EQ(maps.Add("a"), nullptr);
    EXPECT_EQ(maps.Add(QString()), nullptr);
    EXPECT_FALSE(maps.Rename("a", "b"));
    EXPECT_FALSE(maps.Rename("a", QString()));
    EXPECT_TRUE(maps.Rename("a", "z"));
    EXPECT_EQ(maps.GetAt(0), a);
    EXPECT_EQ(a->GetName(), u"z");
    EXPECT_EQ(maps.GetUnoccupiedName("z"), u"z_1");
    EXPECT_FALSE(maps.GetUnoccupiedName(QString()).isEmpty());
    EXPECT_TRUE(maps.Remove("z"));
    EXPECT_FALSE(maps.Remove("z"));
    EXPECT_EQ(maps.GetCount(), 1);
}

TEST(Scenes, AreFoundByIndexAndName)
{
    CTxScenes scenes;
    scenes.Add("a");
    CTxSceneStorage *b = scenes.Add("b");
    EXPECT_EQ(scenes.Add("b"), nullptr);
    EXPECT_EQ(scenes.GetAt(scenes.Find("b")), b);
    EXPECT_FALSE(scenes.Remove(2));
    EXPECT_TRUE(scenes.Remove(0));
    EXPECT_EQ(scenes.GetAt(0), b);
    EXPECT_EQ(scenes.GetAt(-1), nullptr);
}

TEST(LayerStyle, NewLayersOfAKindDiffer)
{
    for (const auto kind :
         {CElemDatasetInfo::Point, CElemDatasetInfo::Line, CElemDatasetInfo::Region, CElemDatasetInfo::CAD}) {
        for (int i = 0; i < 5; ++i)
            EXPECT_FALSE(defaultStyle(kind, i) == defaultStyle(kind, i + 1)) << kind << ' ' << i;
    }
    EXPECT_EQ(defaultStyle(CElemDatasetInfo::Line, -7), defaultStyle(CElemDatasetInfo::Line, 0));
}

TEST(LayerStyle, LinesAreSeenOnEveryBackground)
{
    for (const QColor &background :
         {QColor(Qt::white), QColor(0x1e, 0x1e, 0x1e), QColor(Qt::black), QColor(Qt::gray)}) {
        for (const QColor &line : {QColor(0x40, 0x40, 0x40), QColor(Qt::white), QColor(Qt::darkBlue), background}) {
            TxLayerStyle style;
            style.geoStyle.lineColor = line;
            const QColor seen = legibleStyle(style, background).geoStyle.lineColor;
            EXPECT_GT(std::abs(qGray(seen.rgb()) - qGray(background.rgb())), 20)
                << qPrintable(line.name() + background.name());
        }
    }
    TxLayerStyle style;
    EXPECT_EQ(legibleStyle(style, Qt::white), style) << "a colour that is seen is left alone";
}

} // namespace
