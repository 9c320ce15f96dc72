#include "engine/base/TxGdal.h"
#include "engine/projection/TxCoordSysPrivate.h"

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double unitsPerMetre = 10000.0; // a unit code counts tenths of a millimetre
constexpr qint32 metre = 10000;
constexpr qint32 degree = 0;

/// Names that drivers give to systems they know nothing of.
bool isUndefined(const OGRSpatialReference &reference)
{
    const QByteArray name = reference.GetName();
    return name.startsWith("Undefined ") || name.compare("undefined", Qt::CaseInsensitive) == 0;
}

} // namespace

CTxPJCoordSys TxCoordSysPrivate::fromReference(const OGRSpatialReference *reference)
{
    CTxPJCoordSys result;
    if (reference && !reference->IsEmpty() && !isUndefined(*reference))
        result.d->set(*reference);
    return result;
}

void TxCoordSysPrivate::set(const OGRSpatialReference &other)
{
    reference.reset(other.Clone());
    reference->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
}

CTxPJCoordSys::CTxPJCoordSys() : d(std::make_unique<TxCoordSysPrivate>()) {}

CTxPJCoordSys::~CTxPJCoordSys() = default;

CTxPJCoordSys::CTxPJCoordSys(const CTxPJCoordSys &other) : CTxPJCoordSys()
{
    *this = other;
}

CTxPJCoordSys &CTxPJCoordSys::operator=(const CTxPJCoordSys &other)
{
    if (this != &other) {
        if (other.d->reference)
            d->set(*other.d->reference);
        else
            d->reference.reset();
    }
    return *this;
}

bool CTxPJCoordSys::FromText(const QString &text)
{
    const TxGdal::ErrorCollector errors;
    constexpr std::array<const char *, 3> options = {"ALLOW_NETWORK_ACCESS=NO", "ALLOW_FILE_ACCESS=NO", nullptr};
    OGRSpatialReference reference;
    const QByteArray utf8 = text.trimmed().toUtf8();
    if (utf8.isEmpty() || reference.SetFromUserInput(utf8.constData(), options.data()) != OGRERR_NONE ||
        reference.IsEmpty()) {
        return errors.fail(QStringLiteral("“%1” describes no coordinate system").arg(text.left(200)));
    }
    d->set(reference);
    return true;
}

QString CTxPJCoordSys::ToWkt() const
{
    if (!d->reference)
        return QString();
    const TxGdal::ErrorCollector errors;
    char *wkt = nullptr;
    constexpr std::array<const char *, 2> options = {"FORMAT=WKT2_2019", nullptr};
    d->reference->exportToWkt(&wkt, options.data());
    const QString result = QString::fromUtf8(wkt);
    CPLFree(wkt);
    return result;
}

QString CTxPJCoordSys::GetName() const
{
    return d->reference ? QString::fromUtf8(d->reference->GetName()) : QString();
}

CTxPJCoordSys::Type CTxPJCoordSys::GetType() const
{
    if (!d->reference)
        return None;
    if (d->reference->IsProjected())
        return Projected;
    if (d->reference->IsGeographic())
        return Geographic;
    return Local;
}

qint32 CTxPJCoordSys::GetDistUnits() const
{
    switch (GetType()) {
    case None:
        return metre;
    case Geographic:
        return degree;
    default: {
        const double code = std::round(d->reference->GetLinearUnits() * unitsPerMetre);
        const bool fits = code >= 1 && code <= std::numeric_limits<qint32>::max();
        return fits ? static_cast<qint32>(code) : metre;
    }
    }
}

bool CTxPJCoordSys::operator==(const CTxPJCoordSys &other) const
{
    if (!d->reference || !other.d->reference)
        return !d->reference && !other.d->reference;
    const TxGdal::ErrorCollector errors;
    return d->reference->IsSame(other.d->reference.get()) != 0;
}
