#include "DataCommands.h"

#include "Actions.h"
#include "AppendDialog.h"
#include "CopyDatasetDialog.h"
#include "DocumentArea.h"
#include "MapWindow.h"
#include "ParallelLineDialog.h"
#include "Prompts.h"
#include "WorkspaceCommands.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "common/TdCommMethods.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/ui/TxDlgProgress.h"

#include <QAction>
#include <QGuiApplication>
#include <QLocale>

#include <algorithm>
#include <array>

namespace {

/// The kinds of datasets that LineMakeSmooth takes.
bool canSmooth(const CTxDataset &dataset)
{
    return dataset.GetType() == CElemDatasetInfo::Line || dataset.GetType() == CElemDatasetInfo::CAD;
}

bool holdsLines(const CTxDataset &dataset)
{
    constexpr std::array kinds = {CElemDatasetInfo::Line, CElemDatasetInfo::CAD, CElemDatasetInfo::Line3D,
                                  CElemDatasetInfo::Network, CElemDatasetInfo::Route};
    return std::find(kinds.begin(), kinds.end(), dataset.GetType()) != kinds.end();
}

} // namespace

DataCommands::DataCommands(WorkspaceDocument &document, WorkspacePane &pane, DocumentArea &area,
                           WorkspaceCommands &commands, Actions &actions, Prompts &prompts, QWidget *window)
    : QObject(window), m_document(document), m_pane(pane), m_area(area), m_commands(commands), m_actions(actions),
      m_prompts(prompts), m_window(window)
{
    connect(actions[Actions::CopyDataset], &QAction::triggered, this, &DataCommands::copyDataset);
    connect(actions[Actions::Append], &QAction::triggered, this, &DataCommands::append);
    connect(actions[Actions::SmoothLines], &QAction::triggered, this, &DataCommands::smoothLines);
    connect(actions[Actions::ParallelLine], &QAction::triggered, this, &DataCommands::makeParallelLines);
    connect(&pane, &WorkspacePane::selectionChanged, this, &DataCommands::updateActions);
    updateActions();
}

CTxDataset *DataCommands::selected() const
{
    const QList<CTxDataset *> datasets = m_commands.selectedDatasets();
    return datasets.size() == 1 ? datasets.first() : nullptr;
}

CDatasetVector *DataCommands::selectedLines() const
{
    CTxDataset *dataset = selected();
    return dataset && holdsLines(*dataset) ? static_cast<CDatasetVector *>(dataset) : nullptr;
}

void DataCommands::updateActions()
{
    const CTxDataset *dataset = selected();
    const CDatasetVector *lines = selectedLines();
    m_actions[Actions::CopyDataset]->setEnabled(dataset);
    m_actions[Actions::Append]->setEnabled(dataset && DatasetJobs::canChange(*dataset));
    m_actions[Actions::SmoothLines]->setEnabled(lines && canSmooth(*lines) && DatasetJobs::canChange(*lines));
    m_actions[Actions::ParallelLine]->setEnabled(lines);
}

bool DataCommands::run(const Job &job, const QList<CTxDataSource *> &sources)
{
    DatasetJobs::Result result;
    m_area.pause(sources);
    {
        CTxDlgProgress window;
        window.SetShowDelay(CTxDlgProgress::usualDelay);
        window.SetWindowTitle(QGuiApplication::applicationDisplayName());
        window.SetTitleMessage(job.title);
        window.Create(m_window);
        result = job.work(window.GetProgress());
    }
    m_area.resume();
    m_pane.updateDatasets();
    if (result.state == DatasetJobs::Result::Done)
        Q_EMIT m_document.told(job.done(result.count));
    else if (result.state == DatasetJobs::Result::Stopped)
        Q_EMIT m_document.told(tr("%1 was stopped.").arg(job.title));
    for (const QString &note : result.notes)
        Q_EMIT m_document.told(note);
    if (result.state == DatasetJobs::Result::Failed)
        Q_EMIT m_document.failed(job.failed, result.why);
    return result.state == DatasetJobs::Result::Done;
}

void DataCommands::showNew(const DatasetJobs::Place &place)
{
    m_pane.addDataset(place.dataSource->GetAlias(), place.name);
    m_document.touch();
}

void DataCommands::copyDataset()
{
    CTxDataset *source = selected();
    if (!source)
        return;
    CopyDatasetDialog dialog(m_document.workspace(), *source, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const DatasetJobs::Place place = dialog.place();
    const QString name = source->GetName();
    const QString alias = place.dataSource->GetAlias();
    Job job;
    job.title = tr("Copying “%1” to “%2”").arg(name, alias);
    job.work = [&](const TxProgress &progress) { return DatasetJobs::copy(*source, place, progress); };
    job.done = [&](qint64 count) {
        return count < 0 ? tr("“%1” was copied to “%2” as “%3”.").arg(name, alias, place.name)
                         : tr("“%1” was copied to “%2” as “%3”; records: %4.")
                               .arg(name, alias, place.name, QLocale().toString(count));
    };
    job.failed = tr("“%1” could not be copied to “%2”.").arg(name, alias);
    if (run(job, {source->GetDataSource(), place.dataSource}))
        showNew(place);
}

void DataCommands::append()
{
    const MapWindow *map = m_area.currentMap();
    AppendDialog dialog(m_document.workspace(), selected(), map ? map->canvas() : nullptr, m_prompts, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    CTxDataset *target = dialog.target();
    CTxDataset *source = dialog.source();
    const DatasetJobs::ImageFile image = dialog.image();
    const CRect2D bounds = dialog.bounds(); // before the map lets go of its datasets
    const QString from = source ? source->GetName() : image.path;
    Job job;
    job.title = tr("Appending “%1” to “%2”").arg(from, target->GetName());
    job.work = [&](const TxProgress &progress) {
        if (!source)
            return DatasetJobs::append(image, static_cast<CDatasetRaster &>(*target), dialog.replaces(), progress);
        if (!target->IsVector())
            return DatasetJobs::append(static_cast<CDatasetRaster &>(*source), static_cast<CDatasetRaster &>(*target),
                                       dialog.replaces(), progress);
        return DatasetJobs::append(static_cast<CDatasetVector &>(*source), static_cast<CDatasetVector &>(*target),
                                   dialog.tagField(), bounds, progress);
    };
    job.done = [&](qint64 count) {
        return count < 0 ? tr("“%1” was laid into “%2”.").arg(from, target->GetName())
                         : tr("“%1” was appended to “%2”; records: %3.")
                               .arg(from, target->GetName(), QLocale().toString(count));
    };
    job.failed = tr("“%1” could not be appended to “%2”.").arg(from, target->GetName());
    QList<CTxDataSource *> sources{target->GetDataSource()};
    if (source)
        sources << source->GetDataSource();
    if (run(job, sources))
        m_document.touch();
}

void DataCommands::smoothLines()
{
    CDatasetVector *lines = selectedLines();
    if (!lines)
        return;
    const QString name = lines->GetName();
    QString explanation = tr("Each line of up to 3000 points becomes a curve near its points; ends stay where they "
                             "are. This cannot be undone.");
    if (!lines->GetDataSource()->HasCapability(CTxDataSource::CanTransact))
        explanation += QLatin1Char(' ') + tr("If you cancel on the way, what was smoothed by then stays so.");
    if (!m_prompts.confirm(m_window, tr("Smooth the lines of “%1”?").arg(name), explanation, tr("Smooth")))
        return;
    Job job;
    job.title = tr("Smoothing the lines of “%1”").arg(name);
    job.work = [&](const TxProgress &progress) { return DatasetJobs::smoothLines(*lines, progress); };
    job.done = [&](qint64 count) {
        return tr("The lines of “%1” were smoothed; records: %2.").arg(name, QLocale().toString(count));
    };
    job.failed = tr("The lines of “%1” could not be smoothed.").arg(name);
    if (run(job, {lines->GetDataSource()}))
        m_document.touch();
}

void DataCommands::makeParallelLines()
{
    CDatasetVector *lines = selectedLines();
    if (!lines)
        return;
    ParallelLineDialog dialog(m_document.workspace(), *lines, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const DatasetJobs::Place place = dialog.place();
    const QString name = lines->GetName();
    Job job;
    job.title = tr("Making parallels to “%1”").arg(name);
    job.work = [&](const TxProgress &progress) {
        return DatasetJobs::parallelLines(*lines, place, dialog.distance().value_or(0), dialog.side(), progress);
    };
    job.done = [&](qint64 count) {
        return tr("Parallels to “%1” were made as “%2”; lines: %3.").arg(name, place.name, QLocale().toString(count));
    };
    job.failed = tr("Parallels to “%1” could not be made.").arg(name);
    if (run(job, {lines->GetDataSource(), place.dataSource}))
        showNew(place);
}
