#include "colour/RampReport.h"

#include "common/TdModule.h"
#include "res/StringId.h"

namespace {

struct NoteText
{
    RampReport::Note note;
    TdStringId::Id text;
};

constexpr NoteText noteTexts[] = {
    {RampReport::Unreadable, TdStringId::RampUnreadable},   {RampReport::TooLarge, TdStringId::RampTooLarge},
    {RampReport::UnknownKind, TdStringId::RampUnknownKind}, {RampReport::WrongHead, TdStringId::RampWrongHead},
    {RampReport::NoColors, TdStringId::RampNoColors},       {RampReport::BadLine, TdStringId::RampBadLine},
    {RampReport::BadNumber, TdStringId::RampBadNumber},     {RampReport::BadColor, TdStringId::RampBadColor},
    {RampReport::BadOrder, TdStringId::RampBadOrder},       {RampReport::NeedsRange, TdStringId::RampNeedsRange},
    {RampReport::NotWritten, TdStringId::RampNotWritten},   {RampReport::BeyondLost, TdStringId::RampBeyondLost},
    {RampReport::NoValueLost, TdStringId::RampNoValueLost}, {RampReport::AlphaLost, TdStringId::RampAlphaLost},
    {RampReport::Sampled, TdStringId::RampSampled},         {RampReport::Categories, TdStringId::RampCategories},
    {RampReport::Relative, TdStringId::RampRelative},       {RampReport::HingeLost, TdStringId::RampHingeLost},
    {RampReport::CycleLost, TdStringId::RampCycleLost},     {RampReport::LabelsLost, TdStringId::RampLabelsLost},
    {RampReport::GapClosed, TdStringId::RampGapClosed},     {RampReport::ChosenColors, TdStringId::RampChosenColors},
    {RampReport::RangeLost, TdStringId::RampRangeLost},     {RampReport::SpacingLost, TdStringId::RampSpacingLost},
};

consteval bool areInOrder()
{
    for (size_t i = 0; i < std::size(noteTexts); ++i) {
        if (noteTexts[i].note != static_cast<RampReport::Note>(i))
            return false;
    }
    return std::size(noteTexts) == RampReport::noteCount;
}
static_assert(areInOrder());

} // namespace

QStringList RampReport::texts() const
{
    QStringList result;
    for (const NoteText &row : noteTexts) {
        const Item &item = m_items[static_cast<size_t>(row.note)];
        if (item.count == 0)
            continue;
        QString text = CTdModule::LoadString(row.text);
        if (item.line > 0 && item.count == 1)
            text = CTdModule::LoadString(TdStringId::RampAtLine).arg(text).arg(item.line);
        else if (item.line > 0)
            text = CTdModule::LoadString(TdStringId::RampAtLines).arg(text).arg(item.line).arg(item.count - 1);
        result.append(text);
    }
    return result;
}
