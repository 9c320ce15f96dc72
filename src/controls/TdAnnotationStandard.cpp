#include "controls/TdAnnotationStandard.h"

#include "basic/TdProfileFile.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/VocabularyTables.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QFontDatabase>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int meter = 10000; // the code of a unit is its length in tenths of a millimeter

// The keys in a section of the profile. Do not change: users' files hold them.
constexpr auto heightKey = "TextHeight"_L1;
constexpr auto fontKey = "Font"_L1;
constexpr auto unitKey = "Unit"_L1;
constexpr auto precisionKey = "Precision"_L1;

bool isHeight(double height)
{
    return height >= CTdAnnotationStandard::smallestHeight && height <= CTdAnnotationStandard::greatestHeight;
}

bool isFont(const QString &family)
{
    return family.isEmpty() || QFontDatabase::families().contains(family, Qt::CaseInsensitive);
}

bool isUnit(int unit)
{
    return TdTable::find(TdVocabulary::units, &TdVocabulary::UnitRow::code, unit) != nullptr;
}

bool isPrecision(int precision)
{
    return precision >= 0 && precision <= CTdAnnotationStandard::greatestPrecision;
}

} // namespace

CTdAnnotationStandard::CTdAnnotationStandard() : unit(meter) {}

QString CTdAnnotationStandard::GetProblem() const
{
    if (!isHeight(textHeight))
        return CTdModule::LoadString(TdStringId::AnnotationHeightWanted)
            .arg(TxNumberText::shortest(smallestHeight), TxNumberText::shortest(greatestHeight));
    if (!isFont(fontFamily))
        return CTdModule::LoadString(TdStringId::AnnotationFontWanted).arg(fontFamily);
    if (!isUnit(unit))
        return CTdModule::LoadString(TdStringId::AnnotationUnitWanted);
    if (!isPrecision(precision))
        return CTdModule::LoadString(TdStringId::AnnotationPrecisionWanted).arg(greatestPrecision);
    return QString();
}

CTdAnnotationStandard CTdAnnotationStandard::Load(const CTdProfileFile &profile, const QString &name)
{
    CTdAnnotationStandard standard;
    bool isNumber = false;
    const double height = TxNumberText::toDouble(profile.ReadStringValue(name, heightKey), &isNumber);
    if (isNumber && isHeight(height))
        standard.textHeight = height;
    if (const QString font = profile.ReadStringValue(name, fontKey); isFont(font))
        standard.fontFamily = font;
    if (const int unit = profile.ReadIntValue(name, unitKey, standard.unit); isUnit(unit))
        standard.unit = unit;
    if (const int precision = profile.ReadIntValue(name, precisionKey, standard.precision); isPrecision(precision))
        standard.precision = precision;
    return standard;
}

bool CTdAnnotationStandard::Save(CTdProfileFile &profile, const QString &name) const
{
    // The height as a text: the profile's numbers are whole.
    return IsValid() && profile.WriteStringValue(name, heightKey, TxNumberText::shortest(textHeight)) &&
           profile.WriteStringValue(name, fontKey, fontFamily) && profile.WriteIntValue(name, unitKey, unit) &&
           profile.WriteIntValue(name, precisionKey, precision);
}

QString CTdAnnotationStandard::FormatLength(double length) const
{
    if (!std::isfinite(length))
        return QString();
    QString number = TxNumberText::fixed(length, std::clamp(precision, 0, greatestPrecision));
    const bool isZero = std::none_of(number.cbegin(), number.cend(), [](QChar c) { return c >= u'1' && c <= u'9'; });
    if (isZero && number.startsWith(u'-'))
        number.remove(0, 1);
    return number + u' ' + CTdCommMethods::GetDistanceUint(unit);
}
