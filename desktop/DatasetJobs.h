#pragma once

#include "engine/base/TxProgress.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/ElemDataEnc.h"
#include "engine/geometry/Rect2D.h"

#include <QString>
#include <QStringList>

class CDatasetVector;
class CTxDataset;
class CTxDataSource;

/// The long work of the Data menu, without windows. Each job opens the datasets that it needs and closes again those
/// that it opened. What was stopped or failed is taken back as far as the storage can, and the result says so.
namespace DatasetJobs {

/// How a job ended. A value type.
struct Result
{
    enum State { Done, Stopped, Failed };
    State state = Done;
    qint64 count = 0;  ///< records that were made or changed; -1 where none are counted
    QString why;       ///< of what failed
    QStringList notes; ///< what the user should know besides: one sentence each
};

/// How a new dataset is to be called, and where it is made.
struct Place
{
    CTxDataSource *dataSource = nullptr;
    QString name;
    CElemDataEnc::encType encoding = CElemDataEnc::NONE;
};

/// Which side of a line, seen in its direction.
enum class Side { Left, Right, Both };

/// Where an image file is taken from and where it is laid.
struct ImageFile
{
    QString path;
    CRect2D bounds; ///< in the target's coordinate system; void for where the file says itself
};

/// True when what is in @p dataset can be changed.
bool canChange(const CTxDataset &dataset);

/// Makes a copy of @p source with everything that is in it. When that fails, nothing is left of the copy.
Result copy(CTxDataset &source, const Place &place, const TxProgress &progress);
/// Appends the records of @p source to @p target; see CTxAppendDef for @p tagField and @p bounds.
Result append(CDatasetVector &source, CDatasetVector &target, const QString &tagField, const CRect2D &bounds,
              const TxProgress &progress);
/// Lays the cells of @p source into @p target. @param replace also where the target has data
Result append(CDatasetRaster &source, CDatasetRaster &target, bool replace, const TxProgress &progress);
Result append(const ImageFile &image, CDatasetRaster &target, bool replace, const TxProgress &progress);
/// Smooths the lines of a line or CAD dataset in place.
Result smoothLines(CDatasetVector &dataset, const TxProgress &progress);
/// Makes a line dataset of lines parallel to those of @p source, with their user values.
/// @param distance above 0, in the units of the coordinate system
Result parallelLines(CDatasetVector &source, const Place &place, double distance, Side side,
                     const TxProgress &progress);

} // namespace DatasetJobs
