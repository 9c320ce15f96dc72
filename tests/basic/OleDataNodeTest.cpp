#include "basic/TdOleDataNode.h"

#include <QMimeData>
#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using Node = CTdOleDataNode;

/// A node that uses every member, with names from several scripts.
Node richNode()
{
    Node node(Node::WndWorkspaceTree, Node::ItemTile, u"Städte"_s, u"データ"_s, 0xFFFFFFFFu, -7);
    node.entries.append({u"a/b \"c\""_s, u"\U0001F5FA مدينة\n2"_s, 30, 149});
    node.entries.append({QString(), QString(10000, u'x'), 60, Node::noDatasetType});
    return node;
}

/// The layout is a contract with other processes. The first entry is the one that the constructor makes.
TEST(OleDataNode, LayoutIsFixedAndLittleEndian)
{
    Node node(Node::WndWorkspaceTree, Node::ItemMap, u"M"_s, u"C"_s, 1, 2);
    node.entries.append({QString(), QString(), 30, 149});
    EXPECT_EQ(node.encode().toHex(' '),
              QByteArray("54 58 44 4e 01 00 0a 00 00 00 3c 00 00 00 02 00 00 00 4d 00 02 00 00 00 43 00 "
                         "01 00 00 00 02 00 00 00 02 00 00 00 "
                         "02 00 00 00 43 00 02 00 00 00 4d 00 3c 00 00 00 ff ff ff ff "
                         "ff ff ff ff ff ff ff ff 1e 00 00 00 95 00 00 00"));
}

TEST(OleDataNode, EveryCutIsRefusedAndLeavesTheNode)
{
    Node node = richNode();
    node.entries.removeLast();
    const QByteArray whole = node.encode();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        Node read = richNode();
        ASSERT_FALSE(Node::decode(whole.left(length), read)) << length;
        ASSERT_TRUE(read == richNode()) << length;
    }
    Node read;
    EXPECT_FALSE(Node::decode(whole + '\0', read));
}

TEST(OleDataNode, DamagedBytesNeverCrashOrAllocateMuch)
{
    QRandomGenerator random(1);
    const QByteArray whole = richNode().encode();
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = whole.left(random.bounded(8, 400));
        for (int i = 0; i < 4; ++i)
            bytes[random.bounded(static_cast<int>(bytes.size()))] = static_cast<char>(random.bounded(256));
        Node read;
        Node::decode(bytes, read);
        ASSERT_LE(read.entries.size(), bytes.size() / 16);
    }
    // Counts that claim four thousand million entries, and a text of two gigabytes.
    const QByteArray empty = Node().encode();
    Node read;
    EXPECT_FALSE(Node::decode(empty.chopped(4) + QByteArray::fromHex("ffffffff"), read));
    EXPECT_FALSE(Node::decode(QByteArray(empty).replace(14, 4, QByteArray::fromHex("feffff7f")), read));
}

TEST(OleDataNode, TravelsAsMimeWithItsNamesAsText)
{
    QMimeData mime, other;
    richNode().toMime(mime);
    EXPECT_TRUE(mime.hasFormat(u"application/x-terravox-datanode"_s));
    EXPECT_TRUE(mime.text().startsWith(u"Städte\n"_s));
    Node read;
    ASSERT_TRUE(Node::fromMime(mime, read));
    EXPECT_TRUE(read == richNode());

    other.setText(u"Städte"_s);
    EXPECT_FALSE(Node::fromMime(other, read));
    EXPECT_TRUE(read == richNode());
}

} // namespace
