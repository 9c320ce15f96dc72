#include "basic/TdHostMessage.h"
#include "common/TdCommMethods.h"
#include "common/TdSendMessage.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxVariant.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxRecordset.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace {

/// The user's own identifier of a record. The engine lets users write it, the lists of fields hide it.
constexpr auto userIdName = u"TXUSERID";

constexpr std::array numericTypes = {
    CTxFieldInfo::Short,  CTxFieldInfo::Long,    CTxFieldInfo::Single,
    CTxFieldInfo::Double, CTxFieldInfo::Numeric, CTxFieldInfo::Float,
};

/// Sends the engine's last error to the host's output pane where @p result, an answer of the engine, is a failure.
/// @return @p result
template<class Result>
Result reported(Result result)
{
    if (!result) {
        CTdHostMessage message(CTdHostMessage::OutputText, TxGetErrorMsgObj().GetErrorMessage());
        TdSendMessageToMainWnd(message);
    }
    return result;
}

/// Creates each of @p fields that can be created, in their order, and reports the others one by one. The engine takes
/// all or none at a time: what fails together is parted until the field that is to blame stands alone. Making a
/// thousand columns is one change of the storage so, not a thousand.
void createEach(CDatasetVector &target, const CTxFieldInfos &fields)
{
    if (fields.size() <= 1) {
        if (!fields.isEmpty())
            CTdCommMethods::CreateField(&target, fields.front());
        return;
    }
    if (target.CreateFields(fields))
        return;
    const auto middle = fields.begin() + fields.size() / 2;
    createEach(target, CTxFieldInfos(fields.begin(), middle));
    createEach(target, CTxFieldInfos(middle, fields.end()));
}

} // namespace

bool CTdCommMethods::IsSysFieldName(const QString &name)
{
    if (name.toUpper() == userIdName)
        return true;
    CTxFieldInfo info;
    info.SetName(name);
    info.SetCaption(name);
    return info.IsSystemField();
}

bool CTdCommMethods::IsAvailableFieldName(const CDatasetVector *dataset, const QString &name)
{
    return dataset && !name.startsWith(u"Tx", Qt::CaseInsensitive) && dataset->IsAvailableFieldName(name);
}

bool CTdCommMethods::IsAvailableDatasetName(const CTxDataSource *dataSource, const QString &name)
{
    return dataSource && dataSource->IsAvailableDatasetName(name);
}

bool CTdCommMethods::IsNumericField(CTxFieldInfo info)
{
    return std::find(numericTypes.begin(), numericTypes.end(), info.GetType()) != numericTypes.end();
}

bool CTdCommMethods::CopyFieldInfo(const CDatasetVector *source, CDatasetVector *target)
{
    if (!source || !target)
        return true;
    CTxFieldInfo info;
    QSet<QString> names;
    for (int i = 0; i < target->GetFieldCount(); ++i) {
        if (target->GetFieldInfo(i, info))
            names.insert(info.GetName());
    }
    // Deliberate: letter case counts here, though it does not where the field is made. A field that differs in case
    // alone is so refused and reported, not passed over: callers count on hearing of what was not copied.
    CTxFieldInfos missing;
    for (int i = 0; i < source->GetFieldCount(); ++i) {
        const bool isMissing = source->GetFieldInfo(i, info) && !names.contains(info.GetName()) &&
                               !info.IsSystemField() && info.GetName().compare(userIdName, Qt::CaseInsensitive) != 0;
        if (isMissing)
            missing.append(info);
    }
    createEach(*target, missing);
    return true; // deliberate: also when fields failed, since they were reported and values can still be copied
}

bool CTdCommMethods::CopyFieldValue(const CTxRecordset *source, CTxRecordset *target)
{
    if (!CTxRecordset::GetDatasetOf(source) || !CTxRecordset::GetDatasetOf(target))
        return false;
    bool isAnyWritten = false;
    CTxFieldInfo info;
    CTxVariant value;
    for (int i = 0; i < source->GetFieldCount(); ++i) {
        if (!source->GetFieldInfo(i, info) || info.IsSystemField())
            continue;
        // A field that the target lacks is not tried: for each record an error would be logged.
        const int place = target->FindField(info.GetName());
        if (place >= 0 && source->GetFieldValue(i, value))
            isAnyWritten |= target->SetFieldValue(place, value);
    }
    return isAnyWritten;
}

bool CTdCommMethods::CreateFields(CDatasetVector *dataset, const CTxFieldInfos &infos)
{
    return dataset && reported(dataset->CreateFields(infos));
}

bool CTdCommMethods::CreateField(CDatasetVector *dataset, const CTxFieldInfo &info)
{
    return dataset && reported(dataset->CreateField(info));
}

bool CTdCommMethods::CreateField(CDatasetVector *dataset, const QString &name, qint16 type, qint32 size, quint32 flags)
{
    return dataset && reported(dataset->CreateField(name, type, size, flags));
}

bool CTdCommMethods::Append(CDatasetVector *target, CTxRecordset *source, bool flag, const QString &name,
                            const CRect2D &bounds)
{
    return target && reported(target->Append(source, flag, name, bounds));
}

bool CTdCommMethods::Append(CDatasetRaster *target, CDatasetRaster *source, bool flag)
{
    return target && reported(target->Append(source, flag));
}

bool CTdCommMethods::Append(CDatasetRaster *target, const QString &path, const CRect2D &bounds,
                            CDatasetRaster::FileType type, bool flag)
{
    return target && reported(target->Append(path, bounds, type, flag));
}

CTxDataset *CTdCommMethods::CreateDatasetFrom(CTxDataSource *dataSource, const QString &name, const CTxDataset *source,
                                              CElemDataEnc::encType encoding)
{
    return dataSource && source ? reported(dataSource->CreateDatasetFrom(name, source, encoding)) : nullptr;
}

void CTdCommMethods::ReleaseRecordset(CTxRecordset *&recordset)
{
    if (CDatasetVector *dataset = CTxRecordset::GetDatasetOf(recordset))
        dataset->ReleaseRecordset(recordset);
    recordset = nullptr;
}
