#pragma once

#include "common/TdCommonExport.h"

#include <QString>

class CTdProfileFile;

/// How annotations are written: the height and font of their text, and the unit and precision of the numbers in it.
///
/// A value type, kept in the profile. Values can be set freely; GetProblem() says what is wrong with them, and only
/// those without a problem are stored. What stands in a profile and is no such value is read as the default.
class TDCOMMON_API CTdAnnotationStandard
{
public:
    static constexpr double smallestHeight = 0.1, greatestHeight = 1000.0, usualHeight = 2.5; ///< millimeters
    static constexpr int greatestPrecision = 10;                                              ///< decimals
    static constexpr int usualPrecision = 2;

    double textHeight = usualHeight; ///< of capital letters, in millimeters on paper
    QString fontFamily;              ///< empty for the application's font
    int unit;                        ///< code of a unit of length, as CTdCommMethods::GetDistanceUint() names it
    int precision = usualPrecision;  ///< decimals of numbers

    /// The defaults: 2.5 mm, the application's font, meters, two decimals.
    CTdAnnotationStandard();

    /// Why the values cannot be used, for the user; empty when they can.
    QString GetProblem() const;
    bool IsValid() const { return GetProblem().isEmpty(); }

    /// Reads the standard called @p name.
    static CTdAnnotationStandard Load(const CTdProfileFile &profile,
                                      const QString &name = QStringLiteral("Annotation"));
    /// Stores the standard under the name @p name. @return false when it has a problem or cannot be written
    bool Save(CTdProfileFile &profile, const QString &name = QStringLiteral("Annotation")) const;

    /// @p length (in this unit) as annotations write it, with the unit's name behind it; "-0.00" loses its sign. Empty
    /// for what is no finite number.
    QString FormatLength(double length) const;

    bool operator==(const CTdAnnotationStandard &other) const = default;
};
