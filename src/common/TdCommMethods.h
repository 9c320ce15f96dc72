#pragma once

#include "common/LineDesc.h"
#include "common/SuggestiveTextFormat.h"
#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/ElemDataEnc.h"
#include "engine/data/TxFieldInfo.h"
#include "engine/geometry/Point2Ds.h"
#include "engine/geometry/Rect2D.h"

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>

class CDatasetVector;
class CElemGeometry;
class CGeoCompound;
class CTdOleDataNode;
class CTxDataset;
class CTxDataSource;
class CTxRecordset;
class CTxVariant;
class CTxWorkspace;
class QWidget;

/// The common GIS methods: names and masks of the engine's codes, texts of values, fields and records, plane geometry,
/// messages to user and log, the way from names to engine objects and the end of a dataset's life.
///
/// Names are display texts in the current language. Masks have one bit for a code, 0 for a code without one. Nothing
/// here keeps state, and nothing throws. User-interface thread only.
class TDCOMMON_API CTdCommMethods
{
public:
    CTdCommMethods() = delete;

    /// @name Vocabulary
    /// @{

    /// The filter bit of a dataset type (CElemDatasetInfo::Type); 0 when it has none.
    static quint32 QueryTDDTType(qint32 datasetType);
    /// True when the bit of the dataset type is in @p mask. A type without a bit is in no mask.
    static bool IsSupportDTType(qint32 datasetType, quint32 mask);
    /// The same for the type of @p dataset; false for null.
    static bool IsSupportDTType(const CTxDataset *dataset, quint32 mask);
    /// The bit of a datasource engine type (CTxDataSourceStorage::Type); 0 when it has none.
    static quint32 QueryTDDSType(qint32 engineType);
    /// True when the bit of the engine type of @p dataSource is in @p mask; false for null.
    static bool IsSupportDSType(const CTxDataSource *dataSource, quint32 mask);
    /// The bit of a field type (CTxFieldInfo::Type); 0 when it has none.
    static quint32 QueryTDFieldType(qint16 fieldType);
    /// The bit of an edit action; 0 when it has none.
    static quint32 QueryTDuaAction(qint32 action);
    /// True when every bit of the action is in @p mask, so also for an action without a bit.
    static bool IsTDuaAction(qint32 action, quint32 mask);

    /// The name of a dataset type; "Unknown Type" for any other code.
    static QString GetDatasetTypeName(qint32 datasetType);
    /// The name of a field type; empty for any other code.
    static QString GetFieldNameFromType(qint16 fieldType);
    /// The field type with the name @p name, -1 when there is none.
    static qint16 GetFieldTypeFromName(const QString &name);
    /// The usual length of a field of this type in bytes (characters of texts), 0 where there is none.
    static qint32 GetFieldDefaultLength(qint16 fieldType);
    /// The name of a unit of length by its code (its length in tenths of a millimetre, 0 for degrees); "Meter" for any
    /// other code.
    static QString GetDistanceUint(qint32 unit);
    /// The name of the unit of area that belongs to a unit of length; "Square Meter" for degrees and any other code.
    static QString GetAreaUint(qint32 unit);
    /// The code of the unit of length or area with the name @p name, 1 when there is none (so for degrees).
    static qint32 GetMapUnitType(const QString &name);
    /// The name of an encoding (CElemDataEnc::encType).
    static QString GetEncTypeName(qint32 encType);
    /// The encoding with the name @p name, NONE when there is none.
    static CElemDataEnc::encType GetEncType(const QString &name);
    /// The English name of a datum transformation method by its code; empty for any other code.
    static QString GetProjectTransformationMethodName(qint32 method);
    /// The simple dataset type (Point, Line, Region, Text) that a CAD element's type is drawn as, 0 for any other code.
    static qint32 CADElemTypeToSimpleType(qint32 cadElementType);
    /// The engine type (CTxDataSourceStorage::Type) that opens the file @p path, by its extension: an image format,
    /// DGN, DXF, or the native database for any other. 0 for a ".tdb" that is no native database.
    static qint32 GetDsTypeByExtName(const QString &path);
    /// The character sets of the installed fonts, ascending: their charset bytes and, at the same places, the names of
    /// their scripts. @return true.
    static bool EnumCharset(QByteArray &charsets, QStringList &scripts);

    /// @}
    /// @name Values
    /// @{

    /// The display text of a field's value.
    static QString VAR2STR(const CTxVariant &value);
    /// @p text filled up with "0" at its end to @p width characters; a text that is as long or longer is cut to its
    /// first 13 characters, whatever the width.
    static QString StringAlign(const QString &text, int width);

    /// @}
    /// @name Fields and records
    ///
    /// What creates, appends or copies answers what the engine answers. A failure is told to the main window as one
    /// line of text for its output pane (host message 1124), with the engine's last error.
    /// @{

    /// True for the name of a field that the engine keeps itself, and for "TXUSERID" in any letter case.
    static bool IsSysFieldName(const QString &name);
    /// True when a new field of @p dataset may bear @p name: it does not begin with "Tx" in any letter case, and the
    /// engine's own rule allows it (CDatasetVector::IsAvailableFieldName). False for null.
    static bool IsAvailableFieldName(const CDatasetVector *dataset, const QString &name);
    /// True when a new dataset may bear @p name (CTxDataSource::IsAvailableDatasetName). False for null.
    static bool IsAvailableDatasetName(const CTxDataSource *dataSource, const QString &name);
    /// True for short, long, single, double, numeric and float fields; byte, currency and boolean are none.
    static bool IsNumericField(CTxFieldInfo info);
    /// Adds to @p target every user field of @p source whose name (letter case counts) it lacks. @return true always;
    /// fields that could not be made are reported. A null dataset changes nothing.
    static bool CopyFieldInfo(const CDatasetVector *source, CDatasetVector *target);
    /// Writes the user values of the current record of @p source into the record of @p target that the caller opened
    /// for adding or editing, by field name. The caller updates it. @return true when at least one value was written.
    static bool CopyFieldValue(const CTxRecordset *source, CTxRecordset *target);
    /// Adds the fields, all or none. False for null.
    static bool CreateFields(CDatasetVector *dataset, const CTxFieldInfos &infos);
    /// Adds one field. False for null.
    static bool CreateField(CDatasetVector *dataset, const CTxFieldInfo &info);
    static bool CreateField(CDatasetVector *dataset, const QString &name, qint16 type, qint32 size, quint32 flags);
    /// Appends the records of @p source to @p target; see CDatasetVector::Append. False for null.
    static bool Append(CDatasetVector *target, CTxRecordset *source, bool flag, const QString &name,
                       const CRect2D &bounds);
    /// Lays one raster into another; see CDatasetRaster::Append. False for null.
    static bool Append(CDatasetRaster *target, CDatasetRaster *source, bool flag);
    /// Lays an image file into a raster; see CDatasetRaster::Append. False for null.
    static bool Append(CDatasetRaster *target, const QString &path, const CRect2D &bounds,
                       CDatasetRaster::FileType type, bool flag);
    /// Makes an empty dataset like @p source; see CTxDataSource::CreateDatasetFrom. Null for null.
    static CTxDataset *CreateDatasetFrom(CTxDataSource *dataSource, const QString &name, const CTxDataset *source,
                                         CElemDataEnc::encType encoding);
    /// Gives a recordset back to its dataset and sets the pointer to null. A pointer to a recordset that is dead
    /// already is only set to null.
    static void ReleaseRecordset(CTxRecordset *&recordset);

    /// @}
    /// @name Plane geometry
    ///
    /// On whole points of the screen, where y grows downwards, and on points of the map, where y grows upwards.
    /// @{

    /// The distance of two screen points, its fraction cut off. The squares are formed in 32 bits, so it is right up to
    /// coordinate differences of 46,340.
    static int Distance(const QPoint &a, const QPoint &b);
    /// The mathematical angle of the direction from @p b to @p a on the screen, in radians in (-pi, pi]; 0 for a point
    /// with itself.
    static double AngleFromPoint(const QPoint &a, const QPoint &b);
    /// The screen point at @p angle (degrees, counter-clockwise) and @p length from @p origin. The length is scaled by
    /// 100/255 first, the callers' unit in pixels.
    static QPoint PtFromAngle(double angle, double length, const QPoint &origin);
    /// The slope of the line through two screen points; LineDesc::vertical when it is vertical.
    static double Slope(const QPoint &a, const QPoint &b);
    /// The y-intercept of the line, stored into its c unless it is vertical and returned; for a vertical line its y.
    static double FindC(LineDesc &line);
    /// Where two lines whose c is known meet, its fractions cut off; (0, 0) for lines of equal slope.
    static QPoint Intersection(const LineDesc &l1, const LineDesc &l2);
    /// The point at @p distance from @p a on the line through @p a and @p b, on the side where it is no further than
    /// @p tolerance from both; else on the other side.
    static QPoint PointOnLine(const QPoint &a, const QPoint &b, int distance, int tolerance);
    /// True when the two map points differ by less than 1e-10 in x and in y.
    static bool IsTheSamePoint(const CPoint2D &p, const CPoint2D &q);
    /// The counter-clockwise angle of the direction @p from - @p to from the x axis, in radians in [0, 2 pi); pi for a
    /// point with itself.
    static double CalAzimuth(const CPoint2D &from, const CPoint2D &to);
    /// Drops a perpendicular from @p p onto the line through @p a and @p b. @param[out] foot where it ends
    /// @return true when the foot falls on the segment from a to b (CTxOperator::IsPntOnLinesect).
    static bool PointProjectToLineset(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b, CPoint2D &foot);
    /// Adds to @p out the line parallel to the polyline of @p count @p points at @p distance, to the left of its
    /// direction for a positive distance. docs/parallel-lines.md has pictures.
    ///
    /// It begins beside the first vertex and ends beside the last; every segment has its own, parallel and at the
    /// distance. They join in a mitre, which outside of a turn reaches up to 5 distances from the vertex; sharper turns
    /// are cut off straight (bevel). Where the polyline bends more tightly than the distance the line crosses itself:
    /// no segment is left out. The line of a closed polyline is closed; it begins beside the first vertex too, so a
    /// polyline that begins in the middle of a side gives the plain ring.
    ///
    /// Segments shorter than 1e-5 units (a squared length up to 1e-10) are skipped. Linear in @p count.
    /// @return false, and @p out is left as it was, for null and fewer than two points, when every segment is that
    /// short, for a distance below 1e-10, and for coordinates and distances that are not finite or whose square is not.
    static bool ParallelLine(const CPoint2D *points, qint32 count, double distance, CPoint2Ds &out);
    /// Adds the members of @p compound to @p out, those of member compounds in their place. They stay the compound's.
    /// @return false for null and for a compound without members.
    static bool SplitGeoCompound(const CGeoCompound *compound, QList<CElemGeometry *> *out);
    /// Smooths each line of at most 3000 points that @p recordset gives and writes it back; the ends of its parts stay,
    /// the recordset stands at its end. @return false for null or a dead recordset, a dataset neither of lines nor CAD,
    /// and when memory or writing fails: all is then taken back where the storage knows transactions.
    static bool LineMakeSmooth(CTxRecordset *recordset);

    /// @}
    /// @name Default colours
    ///
    /// The 120 colours that users are offered first.
    /// @{

    /// Makes @p palette the table of default colours, opaque. @param[out] count how many there are @return true
    static bool CreateDefaultColorTable(QList<QRgb> &palette, int &count);
    /// The default colour at 0-based @p index; black when out of range.
    static COLORREF GetDefaultColor(int index);
    /// Its name, such as "RGB(255 , 190 ,189)".
    static QString GetDefaultColorName(int index);

    /// @}
    /// @name Messages to user and log
    /// @{

    /// Sends one line to the host's output pane. @return false, and the line is lost, when there is no main window.
    static bool ShowText(const SuggestiveTextFormat &format);
    static bool ShowText(const QString &caption, const QString &text, quint32 flags);
    /// The same with texts of the string table.
    static bool ShowText(quint32 captionId, quint32 textId, quint32 flags);
    /// Takes note of an inconsistency and does nothing with it; see docs/oddities.md.
    /// @param message where it happened: the name of the source
    /// @param type the line
    static void PromptWrong(const QString &message, int type);

    /// Records an entry in the engine's log (CTxLogFile). @return false when it could not be written.
    static bool RecordLog(int level, const QString &message);
    static bool RecordLog(const QString &file, int line, int level, const QString &message);
    static bool RecordDebugLog(const QString &message);
    static bool RecordDebugLog(const QString &file, int line, const QString &message);
    static bool WriteErrorLog(int code, const QString &message, int line);
    static bool WriteErrorLog(const QString &message, const QString &file, int line);

    /// @}
    /// @name From names to engine objects
    /// @{

    /// Looks the datasource up by alias and in it the dataset by name. What is not found is null.
    static void GetDSandDT(const CTxWorkspace *workspace, const QString &alias, const QString &name,
                           CTxDataSource *&dataSource, CTxDataset *&dataset);
    /// The same for the first entry of @p node.
    static void GetDSandDT(const CTxWorkspace *workspace, const CTdOleDataNode &node, CTxDataSource *&dataSource,
                           CTxDataset *&dataset);
    /// The dataset that @p node names; null unless the node has exactly one entry, and that names a dataset.
    static CTxDataset *GetDataset(const CTxWorkspace *workspace, const CTdOleDataNode &node);
    /// The folder of the host's executable, with a separator at its end.
    static QString GetAppDir();
    /// Lets the user choose a folder, through CTdFileChooser.
    /// @param owner parent of the browser; null for the main window
    /// @param initial the folder that is selected at first
    /// @return the folder; @p initial as it stands when the user cancels
    static QString GetFolder(QWidget *owner, const QString &initial, const QString &title);

    /// @}
    /// @name The end of a dataset's life
    ///
    /// The main window is told before and after, as host messages with a data node that names the dataset, so that
    /// windows let go of it in time. Without a main window nothing is closed or deleted. Names that nothing is found
    /// for are skipped; of a node's items the names count, not the kinds. How it ended is seen by looking: nothing is
    /// said about failures. The main window may do anything in answer, also close what is addressed.
    /// @{

    /// Closes a dataset (messages 1165 and 1166). Does nothing when it is not one of the datasource's.
    static void CloseDataset(CTxDataSource *dataSource, CTxDataset *dataset);
    static void CloseDataset(CTxDataSource *dataSource, const QString &name);
    static void CloseDataset(CTxWorkspace *workspace, const QString &alias, const QString &name);
    /// Closes the datasets that @p node names, in its order.
    static void CloseDatasets(CTxWorkspace *workspace, const CTdOleDataNode *node);
    /// Deletes a dataset for good (messages 1167 and 1168), see CTxDataSource::DeleteDataset. The caller has asked the
    /// user. Does nothing when it is not one of the datasource's.
    static void DeleteDataset(CTxDataSource *dataSource, const CTxDataset *dataset);
    static void DeleteDataset(CTxDataSource *dataSource, const QString &name);
    static void DeleteDataset(CTxWorkspace *workspace, const QString &alias, const QString &name);
    /// Deletes the datasets that @p node names, in its order.
    static void DeleteDatasets(CTxWorkspace *workspace, const CTdOleDataNode *node);
    /// Does nothing: the host closes its datasources itself; see docs/oddities.md.
    static void CloseDataSource(CTxDataSource *dataSource);
    static void CloseDataSource(CTxWorkspace *workspace, const QString &alias);
    static void CloseDataSources(CTxWorkspace *workspace, const CTdOleDataNode *node);
    /// Closes a dataset that an operation needs closed, or in place of a vector dataset the child attached to it. The
    /// host is asked to release it (message 1173). Answers it 0, the dataset is closed; is it open after that, the user
    /// is asked.
    /// @return true when it was closed here; false when the user refused, for null, when the dataset is gone, and when
    /// the host took care of it (see docs/oddities.md). Without a main window nobody is asked, and the answer is
    /// whether it is closed.
    static bool PromoteCloseDataset(CTxDataset *dataset);
    static bool PromoteCloseDataset(CTxWorkspace *workspace, const QString &alias, const QString &name);

    /// @}
};
