#include "engine/map/TxWorkspaceReader.h"
#include "engine/map/TxWorkspaceWriter.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// A file in which everything occurs, unknown things at every level too.
const QByteArray full = R"(<?xml version="1.0" encoding="UTF-8"?>
<terravox-workspace version="1" name="World" xmlns:x="http://example.org/x" x:mood="calm">
  <datasource alias="world" path="data/world.tdb" type="14" options="2" priority="3"><x:cache size="5"/></datasource>
  <datasource alias="db" path="PG:dbname=gis" type="4" options="6"/>
  <map name="Countries" background="#102030" left="-180" bottom="-90" right="180.5" top="90" rotation="15">
    <layer name="Rivers" alias="world" dataset="rivers" visible="false" line="#ff0000ff" lineWidth="2.5" label="name" glow="1">
      <filter>a &lt; b<deep><deeper/></deep> tail</filter>
    </layer>
    <layer alias="world" dataset="countries" selectable="false" snapable="false" editable="true" locked="true" fill="#80112233" symbolSize="9" opacity="0.5">
      <colorset floor="-20.5" ceiling="300" stepped="true" space="lab">#010203 #a0b0c0
        #ffffff<stop at="5"/></colorset>
      <colorset>and a second one</colorset>
    </layer>
    <layer alias="world" dataset="railways" line="#000000" lineWidth="2.5">
      <geoStyle season="winter"><line style="12" width="1.5" glow="2"><x:bloom/></line><line style="3"/>
        <fill style="none"/><symbol style="14" size="7"/><shade/></geoStyle>
      <geoStyle/>
    </layer>
    <grid step="10"> </grid>
  </map>
  <map name="Empty"/>
  <layout name="Page" paper="A4">&lt;page w=&quot;210&quot;/&gt;
line 2_x000D_<preview/></layout>
  <layout name="Blank"/>
  <scene name="Globe">&lt;scene/&gt;</scene>
  <future><a b="c">text</a></future>
</terravox-workspace>
)";

TxWorkspaceDocument readGood(const QByteArray &xml)
{
    QString error;
    const auto document = TxWorkspaceReader::read(xml, error);
    EXPECT_TRUE(document) << qPrintable(error);
    return document.value_or(TxWorkspaceDocument());
}

TEST(WorkspaceFormat, ReadsEverything)
{
    const TxWorkspaceDocument document = readGood(full);
    EXPECT_EQ(document.name, u"World");
    ASSERT_EQ(document.dataSources.size(), 2);
    EXPECT_EQ(document.dataSources[1].alias, u"db");
    EXPECT_EQ(document.dataSources[1].path, u"PG:dbname=gis");
    EXPECT_EQ(document.dataSources[1].engineType, 4);
    EXPECT_EQ(document.dataSources[1].options, 6U);
    ASSERT_EQ(document.maps.size(), 2);
    const TxMapRecord &map = document.maps[0];
    EXPECT_EQ(map.background, QColor(0x10, 0x20, 0x30));
    EXPECT_EQ(map.view, CRect2D(-180, -90, 180.5, 90));
    ASSERT_EQ(map.layers.size(), 3);
    EXPECT_EQ(map.layers[0].name, u"Rivers");
    EXPECT_FALSE(map.layers[0].visible);
    EXPECT_EQ(map.layers[0].style.geoStyle.lineWidth, 2.5);
    EXPECT_EQ(map.layers[0].style.geoStyle, plainStyle(QColor(0, 0, 255), TxLayerStyle().geoStyle.fillColor, 2.5, 6));
    CTxGeoStyle railway; // the attributes beside it do not count
    railway.lineStyle = 12;
    railway.lineWidth = 1.5;
    railway.symbolStyle = 14;
    railway.symbolSize = 7;
    EXPECT_EQ(map.layers[2].style.geoStyle, railway);
    EXPECT_EQ(map.layers[0].style.labelField, u"name");
    EXPECT_TRUE(map.layers[1].visible);
    EXPECT_TRUE(map.layers[1].editable && map.layers[1].editableLock);
    EXPECT_FALSE(map.layers[1].selectable || map.layers[1].snapable);
    EXPECT_EQ(map.layers[1].style.geoStyle.fillColor, QColor(0x11, 0x22, 0x33, 0x80));
    EXPECT_EQ(map.layers[1].style.opacity, 0.5);
    const CTxColorsetEx &colors = map.layers[1].style.colors;
    EXPECT_TRUE(colors.GetZFloor() == -20.5 && colors.GetZCeiling() == 300 && map.layers[1].style.stepped);
    ASSERT_EQ(colors.GetSize(), 3);
    EXPECT_EQ(colors.GetRGB(1), 0xC0B0A0U);
    EXPECT_EQ(map.layers[0].style.colors.GetSize(), 0);
    EXPECT_TRUE(document.maps[1].view.IsVoid());
    EXPECT_FALSE(document.maps[1].background.isValid());
    ASSERT_EQ(document.layouts.size(), 2);
    EXPECT_EQ(document.layouts[0].content, u"<page w=\"210\"/>\nline 2\r");
    ASSERT_EQ(document.scenes.size(), 1);
    EXPECT_FALSE(document.repaired);
}

TEST(WorkspaceFormat, UnknownThingsOfEveryLevelSurvive)
{
    const QByteArray once = TxWorkspaceWriter::write(readGood(full));
    EXPECT_EQ(TxWorkspaceWriter::write(readGood(once)), once) << "writing what was written changes nothing";
    for (const char *kept :
         {"x:mood=\"calm\"", "xmlns:x=\"http://example.org/x\"", "priority=\"3\"", "<x:cache size=\"5\"",
          "rotation=\"15\"", "glow=\"1\"", "<filter>a &lt; b<deep><deeper/></deep> tail</filter>",
          "<grid step=\"10\"> </grid>", "paper=\"A4\"",
          "ceiling=\"300\" stepped=\"true\" space=\"lab\">#010203 #a0b0c0 #ffffff<stop at=\"5\"/>", "and a second one",
          "season=\"winter\"", "glow=\"2\"", "<x:bloom/>", "<line style=\"3\"/>", "<shade/>", "<geoStyle/>",
          "<preview/>", "<a b=\"c\">text</a>"})
        EXPECT_TRUE(once.contains(kept)) << kept << " in\n" << once.constData();
}

TEST(WorkspaceFormat, LooksSurviveAndPlainOnesAreAttributesAlone)
{
    const auto rewritten = [](const CTxGeoStyle &style, bool plain) {
        TxWorkspaceDocument document;
        TxLayerRecord layer;
        layer.alias = layer.dataset = "d";
        layer.style.geoStyle = style;
        document.maps.append({"m", CRect2D(), QColor(), {layer}, QString()});
        const QByteArray xml = TxWorkspaceWriter::write(document);
        EXPECT_EQ(xml.contains("geoStyle"), !plain) << xml.constData();
        return readGood(xml).maps[0].layers[0].style.geoStyle;
    };
    for (const double lineWidth : {0.1, 0.7, 1.4, 20.0}) {
        for (const double symbolSize : {1.0, 3.0, 6.6, 100.0}) {
            const CTxGeoStyle style = plainStyle("#80102030", Qt::green, lineWidth, symbolSize);
            EXPECT_EQ(rewritten(style, true), style) << lineWidth << ' ' << symbolSize;
        }
    }
    CTxGeoStyle wide = plainStyle(Qt::red, Qt::green, 1, 6);
    wide.lineWidth = 50;
    EXPECT_EQ(rewritten(wide, false), wide);
    CTxGeoStyle rich = wide;
    rich.lineStyle = 9;
    rich.fillGradient = TxGradientKind::Radial;
    rich.fillAngle = 33.3;
    rich.gradientColors.Add(0x102030);
    rich.symbolStyle = 26;
    rich.symbolColor = QColor(1, 2, 3, 4);
    EXPECT_EQ(rewritten(rich, false), rich);
}

TEST(WorkspaceFormat, OddNamesSurvive)
{
    TxWorkspaceDocument document;
    const QString names[] = {QString(10000, u'n'), "\u202E\u05D0\U0001F5FA", "a\x01\r\n\t\"<&>'", " _x0041_ "};
    for (const QString &name : names) {
        TxLayerRecord layer;
        layer.name = layer.alias = layer.dataset = name;
        document.maps.append({name, CRect2D(), QColor(), {layer}, QString()});
        document.layouts.append({name, name, QString()});
        document.dataSources.append({name, "/" + name, 14, 2, QString()});
    }
    const TxWorkspaceDocument again = readGood(TxWorkspaceWriter::write(document));
    ASSERT_EQ(again.maps.size(), std::ssize(names));
    for (qsizetype i = 0; i < std::ssize(names); ++i) {
        EXPECT_EQ(again.maps[i].name, names[i]);
        EXPECT_EQ(again.maps[i].layers[0].dataset, names[i]);
        EXPECT_EQ(again.layouts[i].content, names[i]);
        EXPECT_EQ(again.dataSources[i].alias, names[i]);
    }
}

TEST(WorkspaceFormat, EveryTruncationIsRefused)
{
    const qsizetype end = full.lastIndexOf('>') + 1;
    for (qsizetype length = 0; length < end; ++length) {
        QString error;
        EXPECT_FALSE(TxWorkspaceReader::read(full.left(length), error)) << length;
        EXPECT_FALSE(error.isEmpty()) << length;
    }
}

TEST(WorkspaceFormat, DamagedBytesAreRefusedOrTakenButNeverCrash)
{
    int refused = 0;
    quint32 state = 1;
    for (int round = 0; round < 3000; ++round) {
        QByteArray damaged = full;
        for (int i = 0; i < 3; ++i) {
            state = state * 1664525U + 1013904223U;
            damaged[static_cast<qsizetype>((state >> 8) % static_cast<quint32>(full.size()))] =
                static_cast<char>(state >> 24);
        }
        QString error;
        if (const auto document = TxWorkspaceReader::read(damaged, error)) {
            const TxWorkspaceDocument again = readGood(TxWorkspaceWriter::write(*document));
            EXPECT_EQ(TxWorkspaceWriter::write(again), TxWorkspaceWriter::write(*document));
        } else {
            ++refused;
        }
    }
    EXPECT_GT(refused, 1000);
}

struct BadRow
{
    const char *name;
    QByteArray xml;
    const char *says; // part of the error text
};

QByteArray inRoot(const QByteArray &content)
{
    return "<terravox-workspace version=\"1\">" + content + "</terravox-workspace>";
}

QByteArray inLayer(const QByteArray &content)
{
    return inRoot("<map name='m'><layer alias='a' dataset='d'>" + content + "</layer></map>");
}

QByteArray entityBomb()
{
    QByteArray xml = "<!DOCTYPE z [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c < 'k'; ++c) {
        const char before[] = {static_cast<char>(c - 1), 0};
        const QByteArray reference = QByteArray("&") + before + ';';
        xml += QByteArray("<!ENTITY ") + c + " \"" + reference.repeated(10) + "\">";
    }
    return xml + "]><terravox-workspace version=\"1\" name=\"&j;\"/>";
}

QByteArray deep()
{
    return inRoot(QByteArray("<a>").repeated(10000) + QByteArray("</a>").repeated(10000));
}

class BadWorkspace : public testing::TestWithParam<BadRow>
{
};

TEST_P(BadWorkspace, IsRefusedWithAReason)
{
    QString error;
    EXPECT_FALSE(TxWorkspaceReader::read(GetParam().xml, error));
    EXPECT_TRUE(error.contains(GetParam().says)) << qPrintable(error);
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadWorkspace,
    testing::Values(
        BadRow{"empty", "", "line 1"}, BadRow{"garbage", QByteArray("\x89PNG\r\n\x1a\n\0\0\0", 11), "line 1"},
        BadRow{"zeros", QByteArray(5000, '\0'), "line"},
        BadRow{"otherRoot", "<html><body/></html>", "no workspace file"},
        BadRow{"noVersion", "<terravox-workspace/>", "which version"},
        BadRow{"newerVersion", "<terravox-workspace version=\"2\"/>", "newer version"},
        BadRow{"versionIsNoNumber", "<terravox-workspace version=\"one\"/>", "version"},
        BadRow{"entityBomb", entityBomb(), "document type"}, BadRow{"deep", deep(), "too deeply"},
        BadRow{"twoRoots", inRoot("") + inRoot(""), "line 1"},
        BadRow{"mapWithoutName", inRoot("<map/>"), "\"name\" of \"map\""},
        BadRow{"onLineThree", inRoot("\n\n<map/>\n"), "line 3"},
        BadRow{"layerWithoutDataset", inRoot("<map name='m'><layer alias='a'/></map>"), "\"dataset\" of \"layer\""},
        BadRow{"datasourceWithoutPath", inRoot("<datasource alias='a'/>"), "\"path\""},
        BadRow{"flagIsNoFlag", inRoot("<map name='m'><layer alias='a' dataset='d' visible='perhaps'/></map>"),
               "visible"},
        BadRow{"colourIsNoColour", inRoot("<map name='m' background='#12'/>"), "background"},
        BadRow{"numberIsNoNumber", inRoot("<map name='m' left='1,5'/>"), "left"},
        BadRow{"numberIsNotFinite", inRoot("<map name='m' left='nan'/>"), "left"},
        BadRow{"optionsOutOfRange", inRoot("<datasource alias='a' path='p' options='99999999999'/>"), "options"},
        BadRow{"optionsNegative", inRoot("<datasource alias='a' path='p' options='-1'/>"), "options"},
        BadRow{"floorIsNoNumber", inLayer("<colorset floor='low'>#000000</colorset>"), "\"floor\" of \"colorset\""},
        BadRow{"ceilingIsNotFinite", inLayer("<colorset ceiling='inf'>#000000</colorset>"), "ceiling"},
        BadRow{"colorIsTooShort", inLayer("<colorset>#000000 #fff</colorset>"), "\"#fff\" in \"colorset\""},
        BadRow{"colorHasASign", inLayer("<colorset>#+12345</colorset>"), "colour"},
        BadRow{"colorIsAName", inLayer("<colorset>scarlet</colorset>"), "colour"},
        BadRow{"textBetween", inRoot("<map name='m'>hello</map>"), "text"},
        BadRow{"sameAttributeTwice", inRoot("<map name='m' name='n'/>"), "line 1"}),
    [](const testing::TestParamInfo<BadRow> &row) { return std::string(row.param.name); });

TEST(WorkspaceFormat, NamesThatOccurTwiceAreMadeUnique)
{
    const TxWorkspaceDocument document =
        readGood(inRoot("<map name='a'/><map name='a'/><map name='a_1'/><map name='A'/><datasource alias='d' path='1'/>"
                        "<datasource alias='d' path='2'/>"));
    QStringList names;
    for (const TxMapRecord &map : document.maps)
        names.append(map.name);
    EXPECT_EQ(names, (QStringList{"a", "a_2", "a_1", "A"}));
    EXPECT_EQ(document.dataSources[1].alias, u"d_1");
    EXPECT_EQ(document.dataSources[1].path, u"2");
    EXPECT_TRUE(document.repaired) << "saving would write other names";
}

TEST(WorkspaceFormat, NumbersOutOfBoundsAreKeptWithinThem)
{
    const TxWorkspaceDocument document = readGood(
        inRoot("<map name='m'><layer alias='a' dataset='d' lineWidth='1e9' symbolSize='0' opacity='7'/></map>"));
    const TxLayerStyle &style = document.maps[0].layers[0].style;
    EXPECT_EQ(style.geoStyle.lineWidth, 20);
    EXPECT_EQ(style.geoStyle.symbolSize + style.geoStyle.symbolOutlineWidth, 1);
    EXPECT_EQ(style.opacity, 1);
}

} // namespace
