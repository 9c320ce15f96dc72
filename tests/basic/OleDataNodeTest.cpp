#include "basic/TdOleDataNode.h"

#include <QMimeData>
#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {

/// A node that uses every member, with names from several scripts.
CTdOleDataNode richNode()
{
    CTdOleDataNode node(CTdOleDataNode::WndWorkspaceTree, CTdOleDataNode::ItemTile, QStringLiteral("Städte"),
                        QStringLiteral("データ"), 0xFFFFFFFFu, -7);
    node.entries.append({QStringLiteral("a/b \"c\""), QStringLiteral("\U0001F5FA مدينة\n2"), 30, 149});
    node.entries.append({QString(), QString(10000, u'x'), 60, CTdOleDataNode::noDatasetType});
    return node;
}

TEST(OleDataNode, ConstructorMakesOneEntry)
{
    const CTdOleDataNode node(CTdOleDataNode::WndWorkspaceTree, CTdOleDataNode::ItemDataset, QStringLiteral("Roads"),
                              QStringLiteral("City"), 3, 4);
    ASSERT_EQ(node.entries.size(), 1);
    const CTdOleDataNode::CTdOleData wanted{QStringLiteral("City"), QStringLiteral("Roads"), 30,
                                            CTdOleDataNode::noDatasetType};
    EXPECT_TRUE(node.entries.first() == wanted);
    EXPECT_EQ(node.name, QStringLiteral("Roads"));
    EXPECT_EQ(node.alias, QStringLiteral("City"));
    EXPECT_EQ(node.flags, 3u);
    EXPECT_EQ(node.number, 4);
}

TEST(OleDataNode, BytesGiveTheSameNode)
{
    for (const CTdOleDataNode &node : {richNode(), CTdOleDataNode()}) {
        CTdOleDataNode read;
        ASSERT_TRUE(CTdOleDataNode::decode(node.encode(), read));
        EXPECT_TRUE(read == node);
    }
}

/// The layout is a contract with other processes.
TEST(OleDataNode, LayoutIsFixedAndLittleEndian)
{
    const CTdOleDataNode node(CTdOleDataNode::WndWorkspaceTree, CTdOleDataNode::ItemMap, QStringLiteral("M"), QString(),
                              1, 2);
    EXPECT_EQ(node.encode().toHex(' '), QByteArray("54 58 44 4e 01 00 0a 00 00 00 3c 00 00 00 02 00 00 00 4d 00 "
                                                   "ff ff ff ff 01 00 00 00 02 00 00 00 01 00 00 00 "
                                                   "ff ff ff ff 02 00 00 00 4d 00 3c 00 00 00 ff ff ff ff"));
}

TEST(OleDataNode, EveryCutIsRefusedAndLeavesTheNode)
{
    CTdOleDataNode node = richNode();
    node.entries.removeLast();
    const QByteArray whole = node.encode();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        CTdOleDataNode read = richNode();
        ASSERT_FALSE(CTdOleDataNode::decode(whole.left(length), read)) << length;
        ASSERT_TRUE(read == richNode()) << length;
    }
    CTdOleDataNode read;
    EXPECT_FALSE(CTdOleDataNode::decode(whole + '\0', read));
}

TEST(OleDataNode, DamagedBytesNeverCrashOrAllocateMuch)
{
    QRandomGenerator random(1);
    const QByteArray whole = richNode().encode();
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = whole.left(random.bounded(8, 400));
        for (int i = 0; i < 4; ++i)
            bytes[random.bounded(static_cast<int>(bytes.size()))] = static_cast<char>(random.bounded(256));
        CTdOleDataNode read;
        CTdOleDataNode::decode(bytes, read);
        ASSERT_LE(read.entries.size(), bytes.size() / 16);
    }
    // Counts that claim four thousand million entries, and a text of two gigabytes.
    QByteArray entries = CTdOleDataNode().encode();
    entries.replace(entries.size() - 4, 4, QByteArray::fromHex("ffffffff"));
    QByteArray text = CTdOleDataNode().encode();
    text.replace(14, 4, QByteArray::fromHex("feffff7f"));
    CTdOleDataNode read;
    EXPECT_FALSE(CTdOleDataNode::decode(entries, read));
    EXPECT_FALSE(CTdOleDataNode::decode(text, read));
}

TEST(OleDataNode, TravelsAsMimeWithItsNamesAsText)
{
    QMimeData mime;
    richNode().toMime(mime);
    EXPECT_TRUE(mime.hasFormat(QStringLiteral("application/x-terravox-datanode")));
    EXPECT_TRUE(mime.text().startsWith(QStringLiteral("Städte\n")));
    CTdOleDataNode read;
    ASSERT_TRUE(CTdOleDataNode::fromMime(mime, read));
    EXPECT_TRUE(read == richNode());

    QMimeData other;
    other.setText(QStringLiteral("Städte"));
    EXPECT_FALSE(CTdOleDataNode::fromMime(other, read));
    EXPECT_TRUE(read == richNode());
}

} // namespace
