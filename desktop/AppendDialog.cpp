#include "AppendDialog.h"

#include "DatasetChooser.h"
#include "Prompts.h"
#include "WorkspaceDocument.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxNumberText.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxMapWnd.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

/// What shapes a kind of dataset holds.
enum class Shapes { None, Points, Lines, Regions, Texts, Any };

struct ShapesRow
{
    CElemDatasetInfo::Type type;
    Shapes shapes;
};

constexpr ShapesRow shapesTable[] = {
    {CElemDatasetInfo::Tabular, Shapes::None},     {CElemDatasetInfo::Point, Shapes::Points},
    {CElemDatasetInfo::Point3D, Shapes::Points},   {CElemDatasetInfo::PointGL3D, Shapes::Points},
    {CElemDatasetInfo::Line, Shapes::Lines},       {CElemDatasetInfo::Line3D, Shapes::Lines},
    {CElemDatasetInfo::Network, Shapes::Lines},    {CElemDatasetInfo::Route, Shapes::Lines},
    {CElemDatasetInfo::Traverse, Shapes::Lines},   {CElemDatasetInfo::Region, Shapes::Regions},
    {CElemDatasetInfo::Region3D, Shapes::Regions}, {CElemDatasetInfo::Parcel, Shapes::Regions},
    {CElemDatasetInfo::Text, Shapes::Texts},       {CElemDatasetInfo::Text3D, Shapes::Texts},
};

Shapes shapesOf(const CTxDataset &dataset)
{
    const auto *row = std::find_if(std::begin(shapesTable), std::end(shapesTable),
                                   [&](const ShapesRow &entry) { return entry.type == dataset.GetType(); });
    return row == std::end(shapesTable) ? Shapes::Any : row->shapes;
}

/// True when the content of @p source may fit @p target.
bool fits(const CTxDataset &source, const CTxDataset &target)
{
    if (&source == &target || source.IsVector() != target.IsVector())
        return false;
    const Shapes from = shapesOf(source), to = shapesOf(target);
    return !target.IsVector() || from == to || from == Shapes::Any || to == Shapes::Any || to == Shapes::None;
}

} // namespace

AppendDialog::AppendDialog(const CTxWorkspace &workspace, const CTxDataset *target, const CTxMapWnd *view,
                           Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_view(view), m_target(new DatasetChooser(workspace, tr("Append to"))),
      m_source(new DatasetChooser(workspace, tr("From"))), m_form(new QFormLayout), m_fileRow(new QWidget),
      m_file(new QLineEdit), m_placeRow(new QWidget), m_place{}, m_tag(new QLineEdit),
      m_onlyView(new QCheckBox(tr("&Only what the map shows now"))),
      m_replace(new QCheckBox(tr("&Replace cells that hold data"))), m_problem(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Append"));
    fillFileRow(prompts);
    fillPlaceRow();
    m_tag->setPlaceholderText(tr("none"));
    m_tag->setToolTip(tr("A text field of the target that gets the name of the dataset each record came from; it is "
                         "made when it is missing"));
    m_onlyView->setToolTip(tr("Lines and regions are cut at the edge of the map window"));
    m_replace->setChecked(true);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_form->addRow(tr("Append &to:"), m_target);
    m_form->addRow(tr("&From:"), m_source);
    m_form->addRow(tr("or &image file:"), m_fileRow);
    m_form->addRow(tr("&Lay it at:"), m_placeRow);
    m_form->addRow(tr("Ta&g field:"), m_tag);
    m_form->addRow(QString(), m_onlyView);
    m_form->addRow(QString(), m_replace);
    m_form->addRow(QString(), m_problem);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(m_form);
    layout->addStretch();
    layout->addWidget(m_buttons);

    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Append"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_target, &DatasetChooser::changed, this, &AppendDialog::onTargetChanged);
    connect(m_source, &DatasetChooser::changed, this, &AppendDialog::updateButtons);
    connect(m_tag, &QLineEdit::textChanged, this, &AppendDialog::updateButtons);
    connect(m_file, &QLineEdit::textChanged, this, &AppendDialog::updateButtons);
    for (const QLineEdit *edit : m_place)
        connect(edit, &QLineEdit::textChanged, this, &AppendDialog::updateButtons);
    m_target->setFilter(DatasetJobs::canChange, target);
    m_source->setFocus();
}

void AppendDialog::fillFileRow(Prompts &prompts)
{
    m_file->setPlaceholderText(tr("none"));
    m_file->setAccessibleName(tr("Image file"));
    auto *browse = new QPushButton(tr("&Browse…"));
    browse->setAutoDefault(false);
    auto *layout = new QHBoxLayout(m_fileRow);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_file, 1);
    layout->addWidget(browse);
    m_fileRow->setFocusProxy(m_file);
    connect(browse, &QPushButton::clicked, this, [this, &prompts] {
        const QStringList chosen =
            prompts.openFiles(this, tr("Append Image File"), m_file->text(), WorkspaceDocument::dataSourceFilters());
        if (!chosen.isEmpty())
            m_file->setText(chosen.first());
    });
}

void AppendDialog::fillPlaceRow()
{
    const std::array names = {tr("left"), tr("bottom"), tr("right"), tr("top")};
    auto *layout = new QHBoxLayout(m_placeRow);
    layout->setContentsMargins(0, 0, 0, 0);
    for (size_t i = 0; i < m_place.size(); ++i) {
        m_place[i] = new QLineEdit;
        m_place[i]->setPlaceholderText(names[i]);
        m_place[i]->setAccessibleName(names[i]);
        m_place[i]->setToolTip(tr("In the target's coordinates; leave all four empty where the file says itself where "
                                  "it lies"));
        layout->addWidget(m_place[i]);
    }
    m_placeRow->setFocusProxy(m_place.front());
}

CTxDataset *AppendDialog::target() const
{
    return m_target->dataset();
}

CTxDataset *AppendDialog::source() const
{
    return image().path.isEmpty() ? m_source->dataset() : nullptr;
}

DatasetJobs::ImageFile AppendDialog::image() const
{
    DatasetJobs::ImageFile image;
    if (target() && !target()->IsVector())
        image.path = m_file->text().trimmed();
    if (!image.path.isEmpty())
        readPlace(image.bounds);
    return image;
}

QString AppendDialog::tagField() const
{
    return target() && target()->IsVector() ? m_tag->text().trimmed() : QString();
}

CRect2D AppendDialog::bounds() const
{
    return m_onlyView->isEnabled() && m_onlyView->isChecked() ? viewBounds() : CRect2D();
}

bool AppendDialog::replaces() const
{
    return m_replace->isChecked();
}

CRect2D AppendDialog::viewBounds() const
{
    const CTxDataset *dataset = target();
    if (!m_view || !dataset || !dataset->IsVector() || dataset->GetType() == CElemDatasetInfo::Tabular)
        return CRect2D();
    CTxPJCoordSys system;
    dataset->GetProjection(system);
    return m_view->GetViewBoundsIn(system);
}

bool AppendDialog::readPlace(CRect2D &place) const
{
    place = CRect2D();
    if (std::all_of(m_place.begin(), m_place.end(), [](const auto *edit) { return edit->text().trimmed().isEmpty(); }))
        return true;
    std::array<double, 4> values{};
    for (size_t i = 0; i < values.size(); ++i) {
        bool ok = false;
        values[i] = TxNumberText::toDouble(m_place[i]->text(), &ok);
        if (!ok || !std::isfinite(values[i]))
            return false;
    }
    const CRect2D entered(values[0], values[1], values[2], values[3]);
    if (!(entered.Width() > 0 && entered.Height() > 0))
        return false;
    place = entered;
    return true;
}

void AppendDialog::onTargetChanged()
{
    const CTxDataset *dataset = target();
    const bool isVector = dataset && dataset->IsVector();
    const bool isRaster = dataset && !isVector;
    m_form->setRowVisible(m_fileRow, isRaster);
    m_form->setRowVisible(m_placeRow, isRaster);
    m_form->setRowVisible(m_tag, isVector);
    m_form->setRowVisible(m_onlyView, isVector);
    m_form->setRowVisible(m_replace, isRaster);
    m_onlyView->setEnabled(!viewBounds().IsVoid());
    m_source->setFilter([dataset](const CTxDataset &other) { return dataset && fits(other, *dataset); });
    updateButtons();
}

QString AppendDialog::problem() const
{
    const CTxDataset *dataset = target();
    if (!dataset)
        return tr("No dataset is open that can be changed.");
    CRect2D place;
    if (!image().path.isEmpty())
        return readPlace(place) ? QString() : tr("Enter all four edges as numbers, or none.");
    if (!source())
        return dataset->IsVector() ? tr("No other open dataset fits “%1”.").arg(dataset->GetName())
                                   : tr("Choose an image file.");
    if (tagField().isEmpty())
        return QString();
    const auto &vector = static_cast<const CDatasetVector &>(*dataset);
    CTxFieldInfo field;
    if (!vector.GetFieldInfo(vector.FindField(tagField()), field))
        return CTdCommMethods::IsAvailableFieldName(&vector, tagField()) ? QString()
                                                                         : tr("The tag field cannot be called that.");
    const bool isText = field.GetType() == CTxFieldInfo::Text || field.GetType() == CTxFieldInfo::Memo ||
                        field.GetType() == CTxFieldInfo::Character;
    return isText && field.CanUpdate() ? QString() : tr("The tag field must be a text field.");
}

void AppendDialog::updateButtons()
{
    const QString text = problem();
    m_problem->setText(text);
    const bool hasFile = !image().path.isEmpty();
    m_source->setEnabled(!hasFile);
    m_placeRow->setEnabled(hasFile);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(text.isEmpty());
}
