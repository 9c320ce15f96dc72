#pragma once

#include "common/SuggestiveTextFormat.h"
#include "common/TdCommonExport.h"
#include "engine/data/ElemDataEnc.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

class CTdOleDataNode;
class CTxDataset;
class CTxDataSource;
class CTxRecordset;
class CTxVariant;
class CTxWorkspace;

/// The common GIS methods: names and masks of the engine's codes, texts of values, messages to user and log, and the
/// way from names to engine objects.
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
    /// Gives a recordset back to its dataset and sets the pointer to null. A pointer to a recordset that is dead
    /// already is only set to null.
    static void ReleaseRecordset(CTxRecordset *&recordset);

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

    /// @}
};
