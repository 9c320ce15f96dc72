#include "ControlPages.h"

#include "GalleryData.h"
#include "basic/TdProfileFile.h"
#include "controls/FileDialogEx.h"
#include "controls/TdFileInfo.h"
#include "engine/base/TxNumberText.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QPushButton>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// A row of the page: what it is called, and what it says of a file; empty for nothing.
struct Fact
{
    const char *name;
    QString (*of)(const CTdFileInfo &info);
};

QString time(const QDateTime &when)
{
    return when.isValid() ? QLocale().toString(when, QLocale::ShortFormat) : QString();
}

QString extent(const CTdFileInfo &info)
{
    const CRect2D &all = info.extent;
    if (info.hasSeveralSystems)
        return ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "several coordinate systems"));
    if (!info.isWholeExtent || all.IsVoid())
        return QString();
    const auto number = [](double value) { return TxNumberText::general(value, 8); };
    return ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "%1, %2 to %3, %4"))
        .arg(number(all.left), number(all.bottom), number(all.right), number(all.top));
}

constexpr Fact facts[] = {
    {QT_TRANSLATE_NOOP("ControlPages", "Kind:"), [](const CTdFileInfo &info) { return info.kind; }},
    {QT_TRANSLATE_NOOP("ControlPages", "Driver:"), [](const CTdFileInfo &info) { return info.driver; }},
    {QT_TRANSLATE_NOOP("ControlPages", "Size:"),
     [](const CTdFileInfo &info) { return info.size > 0 ? QLocale().formattedDataSize(info.size) : QString(); }},
    {QT_TRANSLATE_NOOP("ControlPages", "Created:"), [](const CTdFileInfo &info) { return time(info.created); }},
    {QT_TRANSLATE_NOOP("ControlPages", "Modified:"), [](const CTdFileInfo &info) { return time(info.modified); }},
    {QT_TRANSLATE_NOOP("ControlPages", "Datasets:"),
     [](const CTdFileInfo &info) { return info.datasetCount > 0 ? QString::number(info.datasetCount) : QString(); }},
    {QT_TRANSLATE_NOOP("ControlPages", "Extent:"), extent},
    {QT_TRANSLATE_NOOP("ControlPages", "Coordinate system:"),
     [](const CTdFileInfo &info) { return info.coordSysName; }},
    {QT_TRANSLATE_NOOP("ControlPages", "Pixels:"),
     [](const CTdFileInfo &info) {
         return info.imageSize.isValid() ? u"%1 × %2"_s.arg(info.imageSize.width()).arg(info.imageSize.height())
                                         : QString();
     }},
};

/// The page: a path, typed or chosen in the dialog, and what the library finds out about the file.
class FilePage : public QWidget
{
public:
    FilePage(QWidget *parent, const ShowValue &show);

private:
    /// The path that the user chooses in the dialog; empty for none.
    QString ask(bool toOpen);
    void open();
    void save();
    void look();

    const ShowValue m_show;
    QLineEdit *m_path = new QLineEdit;
    QCheckBox *m_hasPreview;
    std::vector<QLabel *> m_facts;
};

FilePage::FilePage(QWidget *parent, const ShowValue &show) : QWidget(parent), m_show(show)
{
    using ControlPages::text;
    auto *openButton = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Open…")));
    auto *saveButton = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Save as…")));
    m_hasPreview = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "With a &preview")));
    m_hasPreview->setChecked(true);
    auto *row = new QHBoxLayout;
    for (QPushButton *button : {openButton, saveButton}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addWidget(m_hasPreview);
    row->addStretch();
    m_path->setPlaceholderText(text(QT_TRANSLATE_NOOP("ControlPages", "no file")));
    auto *form = new QFormLayout(this);
    form->addRow(row);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&File:")), m_path);
    for (const Fact &fact : facts) {
        auto *label = new QLabel;
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        form->addRow(text(fact.name), label);
        m_facts.push_back(label);
    }
    connect(openButton, &QPushButton::clicked, this, &FilePage::open);
    connect(saveButton, &QPushButton::clicked, this, &FilePage::save);
    connect(m_path, &QLineEdit::editingFinished, this, [this] {
        if (m_path->isModified())
            look();
    });
    // The sample's data: what a first look at the page shows is no empty form.
    if (const QString sample = GalleryData::sampleWorkspace(); !sample.isEmpty())
        m_path->setText(QDir::toNativeSeparators(QFileInfo(sample).dir().filePath(u"terravox.tdb"_s)));
    look();
}

QString FilePage::ask(bool toOpen)
{
    const QString purpose = u"ControlsPage"_s;
    const char *filter = QT_TRANSLATE_NOOP("ControlPages", "Geodata|*.tdb;*.gpkg;*.shp;*.geojson;*.tif|"
                                                           "Images|*.png;*.jpg;*.bmp|All files|*||");
    // On the heap: the window may go while the dialog is open, and takes it along.
    const QPointer<CFileDialogEx> dialog =
        new CFileDialogEx(toOpen, purpose, toOpen ? ControlPages::text(filter) : QString(), window());
    dialog->ShowPreview(m_hasPreview->isChecked());
    const QFileInfo file(m_path->text());
    if (const CTdProfileFile profile; CFileDialogEx::GetRememberedFolder(purpose, profile).isEmpty())
        dialog->setDirectory(file.absolutePath());
    if (!toOpen)
        dialog->selectFile(file.fileName());
    const bool isChosen = dialog->DoModal() == CFileDialogEx::IdOk && dialog;
    const QString path = isChosen ? dialog->GetPathName() : QString();
    delete dialog;
    return path;
}

void FilePage::open()
{
    if (const QString path = ask(true); !path.isEmpty()) {
        m_path->setText(QDir::toNativeSeparators(path));
        look();
    }
}

void FilePage::save()
{
    if (const QString path = ask(false); !path.isEmpty()) // the page has nothing to save
        m_show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "would be saved as %1"))
                   .arg(QFileInfo(path).fileName()));
}

void FilePage::look()
{
    m_path->setModified(false);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor); // many datasets take up to a second
    const CTdFileInfo info = CTdFileInfo::Read(QDir::fromNativeSeparators(m_path->text().trimmed()));
    QGuiApplication::restoreOverrideCursor();
    for (size_t i = 0; i < m_facts.size(); ++i) {
        const QString fact = facts[i].of(info);
        m_facts[i]->setText(fact.isEmpty() ? u"–"_s : fact);
    }
    const QString problem = info.path.isEmpty()
                                ? ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "no file chosen yet"))
                                : info.GetProblem();
    m_show(
        problem.isEmpty()
            ? ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "%1 is known")).arg(QFileInfo(info.path).fileName())
            : problem);
}

} // namespace

QWidget *ControlPages::makeFiles(QWidget *parent, const ShowValue &show)
{
    return new FilePage(parent, show);
}
