#include "engine/data/TxFieldDefinition.h"

#include "engine/base/TxGdal.h"
#include "engine/base/TxNumberText.h"

#include <cpl_error.h>
#include <ogrsf_frmts.h>

#include <QDateTime>

#include <algorithm>
#include <array>

namespace TxFieldDefinition {

namespace {

/// How the default of a field is written in SQL.
enum class Literal { Number, Quoted, Moment, None };

struct TypeRow
{
    qint16 code;
    OGRFieldType type;
    OGRFieldSubType subType;
    bool isBounded; ///< the size of the description counts characters or bytes
    Literal literal;
};

constexpr std::array typeRows = {
    TypeRow{CTxFieldInfo::Boolean, OFTInteger, OFSTBoolean, false, Literal::Number},
    TypeRow{CTxFieldInfo::Byte, OFTInteger, OFSTInt16, false, Literal::Number},
    TypeRow{CTxFieldInfo::Short, OFTInteger, OFSTInt16, false, Literal::Number},
    TypeRow{CTxFieldInfo::Long, OFTInteger, OFSTNone, false, Literal::Number},
    TypeRow{CTxFieldInfo::Currency, OFTReal, OFSTNone, false, Literal::Number},
    TypeRow{CTxFieldInfo::Single, OFTReal, OFSTFloat32, false, Literal::Number},
    TypeRow{CTxFieldInfo::Double, OFTReal, OFSTNone, false, Literal::Number},
    TypeRow{CTxFieldInfo::Date, OFTDateTime, OFSTNone, false, Literal::Moment},
    TypeRow{CTxFieldInfo::Binary, OFTBinary, OFSTNone, true, Literal::None},
    TypeRow{CTxFieldInfo::Text, OFTString, OFSTNone, true, Literal::Quoted},
    TypeRow{CTxFieldInfo::LongBinary, OFTBinary, OFSTNone, false, Literal::None},
    TypeRow{CTxFieldInfo::Memo, OFTString, OFSTNone, false, Literal::Quoted},
    TypeRow{CTxFieldInfo::Character, OFTString, OFSTNone, true, Literal::Quoted},
    TypeRow{CTxFieldInfo::Numeric, OFTReal, OFSTNone, false, Literal::Number},
    TypeRow{CTxFieldInfo::Float, OFTReal, OFSTNone, false, Literal::Number},
    TypeRow{CTxFieldInfo::Time, OFTTime, OFSTNone, false, Literal::Quoted},
    TypeRow{CTxFieldInfo::GeometryBinary, OFTBinary, OFSTNone, false, Literal::None},
};

/// The most characters of a number: what a shapefile can hold, and more than a double has to tell.
constexpr qint32 mostDigits = 254;

const TypeRow *findRow(qint16 code)
{
    const auto row =
        std::find_if(typeRows.begin(), typeRows.end(), [code](const TypeRow &r) { return r.code == code; });
    return row == typeRows.end() ? nullptr : &*row;
}

/// @p text as OGR wants a default; a null string when it is no value of that kind.
QString defaultLiteral(Literal kind, const QString &text)
{
    switch (kind) {
    case Literal::Number: {
        bool ok = false;
        TxNumberText::toDouble(text, &ok);
        return ok ? text.trimmed() : QString();
    }
    case Literal::Quoted:
        return TxGdal::quoteText(text);
    case Literal::Moment: {
        const QDateTime moment = QDateTime::fromString(text, Qt::ISODate);
        return moment.isValid() ? moment.toString(QStringLiteral("''yyyy'/'MM'/'dd HH:mm:ss''")) : QString();
    }
    case Literal::None:
        break;
    }
    return QString();
}

/// Gives @p field, which has no bound, the room in a shapefile that its values may take. The driver's own choice is 9
/// digits, one too few for a whole number of 32 bits, and 80 bytes for a text.
void makeRoomInShapefile(OGRFieldDefn &field)
{
    constexpr int wholeWithSign = 11, longestText = 254;
    if (field.GetWidth() > 0)
        return;
    if (field.GetType() == OFTInteger && field.GetSubType() == OFSTNone)
        field.SetWidth(wholeWithSign);
    else if (field.GetType() == OFTString)
        field.SetWidth(longestText);
}

} // namespace

std::unique_ptr<OGRFieldDefn> toOgr(const CTxFieldInfo &info)
{
    const TypeRow *row = findRow(info.GetType());
    if (!row) {
        CPLError(CE_Failure, CPLE_AppDefined, "the field “%s” has the unknown type %d",
                 info.GetName().toUtf8().constData(), int(info.GetType()));
        return nullptr;
    }
    const bool isNumeric = info.GetType() == CTxFieldInfo::Numeric;
    if (info.GetSize() < 0 || (isNumeric && info.GetSize() > mostDigits)) {
        CPLError(CE_Failure, CPLE_AppDefined, "the field “%s” cannot have the size %d",
                 info.GetName().toUtf8().constData(), int(info.GetSize()));
        return nullptr;
    }
    auto field = std::make_unique<OGRFieldDefn>(info.GetName().toUtf8().constData(), row->type);
    field->SetSubType(row->subType);
    field->SetWidth(bound(info));
    if (info.GetType() == CTxFieldInfo::Long && info.GetSize() > longDigits)
        field->SetType(OFTInteger64);
    if (isNumeric && info.GetSize() > 0) {
        field->SetWidth(info.GetSize());
        field->SetPrecision(std::clamp(info.GetPrecision(), 0, info.GetSize()));
    }
    field->SetNullable((info.GetFlags() & CTxFieldInfo::Required) == 0);
    field->SetUnique((info.GetFlags() & CTxFieldInfo::Unique) != 0);
    if (!info.GetDefault().isEmpty()) {
        const QString literal = defaultLiteral(row->literal, info.GetDefault());
        if (literal.isNull()) {
            CPLError(CE_Failure, CPLE_AppDefined, "“%s” cannot be the default of the field “%s”",
                     info.GetDefault().toUtf8().constData(), info.GetName().toUtf8().constData());
            return nullptr;
        }
        field->SetDefault(literal.toUtf8().constData());
    }
    return field;
}

bool addTo(OGRLayer &layer, const CTxFieldInfos &infos, const QByteArray &driver)
{
    for (const CTxFieldInfo &info : infos) {
        const std::unique_ptr<OGRFieldDefn> field = toOgr(info);
        if (field && driver == "ESRI Shapefile")
            makeRoomInShapefile(*field);
        if (!field || layer.CreateField(field.get(), FALSE) != OGRERR_NONE)
            return false;
        const OGRFeatureDefn &made = *layer.GetLayerDefn();
        const QString name = QString::fromUtf8(made.GetFieldDefn(made.GetFieldCount() - 1)->GetNameRef());
        // Databases that write names in small letters find the field under either.
        if (info.GetName().compare(name, Qt::CaseInsensitive) != 0) {
            CPLError(CE_Failure, CPLE_AppDefined, "a field cannot be called “%s” there",
                     info.GetName().toUtf8().constData());
            return false;
        }
    }
    return true;
}

qint32 bound(const CTxFieldInfo &info)
{
    const TypeRow *row = findRow(info.GetType());
    return row && row->isBounded ? std::max(0, info.GetSize()) : 0;
}

} // namespace TxFieldDefinition
