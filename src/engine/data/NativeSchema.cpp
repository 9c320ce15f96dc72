#include "engine/data/NativeSchema.h"

#include <algorithm>
#include <array>

namespace NativeSchema {

namespace {

/// Groups of fields that come together.
enum Group : unsigned {
    Plain = 0,
    Lengths = 0x1,
    Areas = 0x2,
    Texts = 0x4,
    Edges = 0x8,
    Routes = 0x10,
    Nodes = 0x20,
    Tiles = 0x40
};

struct FieldRow
{
    unsigned group; ///< Plain for every dataset
    const char *name;
    CTxFieldInfo::Type type;
    bool isKey;
};

constexpr std::array fieldRows = {
    FieldRow{Plain, userId, CTxFieldInfo::Long, false},       FieldRow{Lengths, length, CTxFieldInfo::Double, false},
    FieldRow{Areas, area, CTxFieldInfo::Double, false},       FieldRow{Areas, perimeter, CTxFieldInfo::Double, false},
    FieldRow{Texts, text, CTxFieldInfo::Memo, false},         FieldRow{Texts, textAngle, CTxFieldInfo::Double, false},
    FieldRow{Texts, textHeight, CTxFieldInfo::Double, false}, FieldRow{Edges, "TxEdgeID", CTxFieldInfo::Long, true},
    FieldRow{Edges, "TxFNode", CTxFieldInfo::Long, true},     FieldRow{Edges, "TxTNode", CTxFieldInfo::Long, true},
    FieldRow{Routes, "TxRouteID", CTxFieldInfo::Long, true},  FieldRow{Nodes, "TxNodeID", CTxFieldInfo::Long, true},
    FieldRow{Tiles, tileName, CTxFieldInfo::Text, true},
};

struct KindRow
{
    CElemDatasetInfo::Type kind;
    unsigned groups;
};

constexpr std::array recordKinds = {
    KindRow{CElemDatasetInfo::Tabular, Plain},
    KindRow{CElemDatasetInfo::Point, Plain},
    KindRow{CElemDatasetInfo::Line, Lengths},
    KindRow{CElemDatasetInfo::Network, Lengths | Edges},
    KindRow{CElemDatasetInfo::Region, Areas},
    KindRow{CElemDatasetInfo::Parcel, Areas},
    KindRow{CElemDatasetInfo::Text, Texts},
    KindRow{CElemDatasetInfo::Traverse, Lengths},
    KindRow{CElemDatasetInfo::Route, Lengths | Routes},
    KindRow{CElemDatasetInfo::Point3D, Plain},
    KindRow{CElemDatasetInfo::Line3D, Lengths},
    KindRow{CElemDatasetInfo::Region3D, Areas},
    KindRow{CElemDatasetInfo::Text3D, Texts},
    KindRow{CElemDatasetInfo::PointGL3D, Plain},
    KindRow{CElemDatasetInfo::TIN, Plain},
    KindRow{CElemDatasetInfo::CAD, Texts},
};

CTxFieldInfos fieldsOf(unsigned groups)
{
    CTxFieldInfos infos;
    for (const FieldRow &row : fieldRows) {
        if (row.group != Plain && (row.group & groups) == 0)
            continue;
        CTxFieldInfo info(QString::fromLatin1(row.name), row.type);
        if (row.group != Plain)
            info.SetFlags(CTxFieldInfo::System | CTxFieldInfo::ReadOnly);
        else
            info.SetDefault(QStringLiteral("0"));
        infos.append(info);
    }
    return infos;
}

const KindRow *findKind(CElemDatasetInfo::Type kind)
{
    const auto row =
        std::find_if(recordKinds.begin(), recordKinds.end(), [kind](const KindRow &r) { return r.kind == kind; });
    return row == recordKinds.end() ? nullptr : &*row;
}

} // namespace

bool holdsRecords(CElemDatasetInfo::Type kind)
{
    return findKind(kind) != nullptr;
}

bool holdsCells(CElemDatasetInfo::Type kind)
{
    return kind == CElemDatasetInfo::Image || kind == CElemDatasetInfo::Grid || kind == CElemDatasetInfo::DEM;
}

CTxFieldInfos fields(CElemDatasetInfo::Type kind, Role role)
{
    const KindRow *row = findKind(kind);
    if (!row)
        return {};
    const unsigned ofRole = role == Role::Nodes ? Nodes : role == Role::TileIndex ? Tiles : Plain;
    return fieldsOf(row->groups | ofRole);
}

bool isKeyField(const QString &name)
{
    return std::any_of(fieldRows.begin(), fieldRows.end(), [&name](const FieldRow &row) {
        return row.isKey && name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0;
    });
}

} // namespace NativeSchema
