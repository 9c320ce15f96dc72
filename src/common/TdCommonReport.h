#pragma once

#include "common/TdCommonExport.h"
#include "common/TdDialog.h"

#include <QString>

#include <memory>

class QPlainTextEdit;

/// A dialog that shows a report of several lines under a name.
///
/// The setters only store; the dialog shows what is stored when it opens, and when UpdateAllItemValues() is called.
class TDCOMMON_API CTdCommonReport : public CTdDialog
{
    Q_OBJECT

public:
    /// The number of the dialog's template.
    static constexpr quint32 templateId = 10607;
    /// The numbers of its controls. Do not change the values.
    enum ControlId { ContentEdit = 39057, NameLabel = 39058 };

    /// An empty report.
    explicit CTdCommonReport(QWidget *parent = nullptr);
    /// A report that has its texts already.
    CTdCommonReport(const QString &wndName, const QString &reportName, const QString &reportContent);
    ~CTdCommonReport() override;

    /// The title of the window.
    QString GetWndName() const;
    /// The line above the report.
    QString GetReportName() const;
    /// The report.
    QString GetReportContent() const;
    /// Stores a new text. @return the text before.
    QString SetWndName(const QString &wndName);
    QString SetReportName(const QString &reportName);
    QString SetReportContent(const QString &reportContent);
    /// Shows the stored texts.
    void UpdateAllItemValues();

    /// The control that shows the report.
    QPlainTextEdit *GetEditCtrl() const;
    /// Aligns the report: 0 left, 1 centre, 2 right; any other value counts as 0. An alignment is added to those that
    /// were set before: right wins over centre, and centre over left. @return the value that was set before.
    int SetTextAlign(int align);
    /// The value that SetTextAlign() stored last.
    int GetTextAlign() const;

protected:
    bool OnInitDialog() override;

private:
    const std::unique_ptr<class TdCommonReportPrivate> d;
};
