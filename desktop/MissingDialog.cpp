#include "MissingDialog.h"

#include "Prompts.h"
#include "WorkspaceDocument.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

MissingDialog::MissingDialog(WorkspaceDocument &document, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_document(document), m_prompts(prompts), m_list(new QTreeWidget),
      m_locate(new QPushButton(tr("&Locate…"))), m_retry(new QPushButton(tr("&Try Again"))),
      m_remove(new QPushButton(tr("&Remove")))
{
    setWindowTitle(tr("Missing Datasources"));
    auto *label =
        new QLabel(tr("These &datasources of the workspace could not be opened. They stay in the workspace file "
                      "until you remove them."));
    label->setWordWrap(true);
    label->setBuddy(m_list);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHeaderLabels({tr("Datasource"), tr("Path"), tr("Reason")});
    m_list->header()->setStretchLastSection(true);
    m_locate->setToolTip(tr("Choose where the datasource is now"));
    m_retry->setToolTip(tr("Open the datasource where the workspace says it is"));
    m_remove->setToolTip(tr("Take the datasource out of the workspace; its files are not touched"));

    auto *buttons = new QVBoxLayout;
    for (QPushButton *button : {m_locate, m_retry, m_remove}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    auto *middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(buttons);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addLayout(middle, 1);
    layout->addWidget(box);
    resize(760, 340);

    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_locate, &QPushButton::clicked, this, &MissingDialog::locate);
    connect(m_retry, &QPushButton::clicked, this, &MissingDialog::retry);
    connect(m_remove, &QPushButton::clicked, this, &MissingDialog::remove);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &MissingDialog::updateButtons);
    connect(&document, &WorkspaceDocument::missingChanged, this, &MissingDialog::fill);
    fill();
    m_list->setColumnWidth(0, 150);
    m_list->setColumnWidth(1, 250);
}

void MissingDialog::fill()
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    m_list->clear();
    for (const TxMissingDataSource &source : m_document.workspace().GetMissingDataSources()) {
        auto *item = new QTreeWidgetItem(m_list, {source.alias, QDir::toNativeSeparators(source.path), source.reason});
        item->setToolTip(1, item->text(1));
        item->setToolTip(2, source.reason);
    }
    m_list->setCurrentItem(m_list->topLevelItem(std::clamp(row, 0, std::max(0, m_list->topLevelItemCount() - 1))));
    updateButtons();
}

void MissingDialog::updateButtons()
{
    const bool any = m_list->currentItem();
    m_locate->setEnabled(any);
    m_retry->setEnabled(any);
    m_remove->setEnabled(any);
}

QString MissingDialog::currentAlias() const
{
    return m_list->currentItem() ? m_list->currentItem()->text(0) : QString();
}

void MissingDialog::locate()
{
    const QString alias = currentAlias();
    const QString folder = QFileInfo(m_document.workspace().GetPath()).absolutePath();
    const QStringList chosen =
        m_prompts.openFiles(this, tr("Locate %1").arg(alias), folder, WorkspaceDocument::dataSourceFilters());
    if (!chosen.isEmpty())
        m_document.locateMissing(alias, chosen.first());
}

void MissingDialog::retry()
{
    m_document.locateMissing(currentAlias(), QString());
}

void MissingDialog::remove()
{
    m_document.removeMissing(currentAlias());
}
