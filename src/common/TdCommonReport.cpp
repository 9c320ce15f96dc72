#include "common/TdCommonReport.h"

#include "ui_TdCommonReport.h"

#include <QTextOption>

#include <utility>

class TdCommonReportPrivate
{
public:
    Ui::CTdCommonReport ui;
    QString wndName;
    QString reportName;
    QString reportContent;
    int textAlign = 0; // the value that was set last
    int alignBits = 0; // what the edit control has: every value that was ever set
};

CTdCommonReport::CTdCommonReport(QWidget *parent)
    : CTdDialog(templateId, parent), d(std::make_unique<TdCommonReportPrivate>())
{
    d->ui.setupUi(this);
    d->ui.reportContent->setFocus();
    connect(d->ui.buttons, &QDialogButtonBox::accepted, this, &CTdCommonReport::accept);
}

CTdCommonReport::CTdCommonReport(const QString &wndName, const QString &reportName, const QString &reportContent)
    : CTdCommonReport(nullptr)
{
    d->wndName = wndName;
    d->reportName = reportName;
    d->reportContent = reportContent;
}

CTdCommonReport::~CTdCommonReport() = default;

QString CTdCommonReport::GetWndName() const
{
    return d->wndName;
}

QString CTdCommonReport::GetReportName() const
{
    return d->reportName;
}

QString CTdCommonReport::GetReportContent() const
{
    return d->reportContent;
}

QString CTdCommonReport::SetWndName(const QString &wndName)
{
    return std::exchange(d->wndName, wndName);
}

QString CTdCommonReport::SetReportName(const QString &reportName)
{
    return std::exchange(d->reportName, reportName);
}

QString CTdCommonReport::SetReportContent(const QString &reportContent)
{
    return std::exchange(d->reportContent, reportContent);
}

void CTdCommonReport::UpdateAllItemValues()
{
    setWindowTitle(d->wndName);
    d->ui.reportName->setText(d->reportName);
    d->ui.reportContent->setPlainText(d->reportContent);
    d->ui.reportContent->setAccessibleName(d->reportName);
}

QPlainTextEdit *CTdCommonReport::GetEditCtrl() const
{
    return d->ui.reportContent;
}

int CTdCommonReport::SetTextAlign(int align)
{
    const int previous = std::exchange(d->textAlign, align >= 0 && align <= 2 ? align : 0);
    // Deliberate: the bits of earlier values stay. Hosts set centre or right once and 0 for "as it is" later.
    d->alignBits |= d->textAlign;
    QTextOption option = d->ui.reportContent->document()->defaultTextOption();
    option.setAlignment(d->alignBits & 2 ? Qt::AlignRight : d->alignBits & 1 ? Qt::AlignHCenter : Qt::AlignLeft);
    d->ui.reportContent->document()->setDefaultTextOption(option);
    return previous;
}

int CTdCommonReport::GetTextAlign() const
{
    return d->textAlign;
}

bool CTdCommonReport::OnInitDialog()
{
    CTdDialog::OnInitDialog();
    UpdateAllItemValues();
    return true;
}
