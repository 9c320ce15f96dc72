#include "ControlPages.h"
#include "ControlTable.h"
#include "ControlsWindow.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

QString contentOf(const QString &path)
{
    QFile file(QStringLiteral(TD_SOURCE_DIR "/") + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The classes of controls in the public headers of src/controls, and whether code of forms can make them.
std::map<QString, bool> publicControls()
{
    static const QRegularExpression headers(u"HEADERS\\s+(.*?)\\s+SOURCES"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression exported(u"^class TDCOMMON_API (C[A-Z]\\w+)( :|$)(.*)"_s,
                                             QRegularExpression::MultilineOption);
    std::map<QString, bool> controls;
    const QString list = headers.match(contentOf(u"src/controls/CMakeLists.txt"_s)).captured(1);
    for (const QString &header : list.simplified().split(u' ')) {
        const QString text = contentOf(u"src/controls/"_s + header);
        for (auto found = exported.globalMatch(text); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            const QString name = match.captured(1);
            const bool isDialog = match.captured(3).contains(u"Dialog"_s);
            controls[name] = !isDialog && text.contains(u"%1(QWidget *parent = nullptr)"_s.arg(name));
        }
    }
    return controls;
}

/// The place of the page that shows @p name; -1 for none.
int pageOf(const QString &name)
{
    int index = 0;
    for (const ControlPage &page : controlPages()) {
        if (QString::fromLatin1(page.classes).split(u' ').contains(name))
            return index;
        ++index;
    }
    return -1;
}

bool isInDesigner(const QString &name)
{
    const auto rows = controlTable();
    return std::any_of(rows.begin(), rows.end(),
                       [&name](const ControlRow &row) { return name == QLatin1StringView(row.className); });
}

TEST(ControlCoverage, EveryPublicControlHasAPageAndARowInDesigner)
{
    const QMap<QString, const char *> notInForms{
        {u"CTdListCtrl"_s, "what CListCtrlEx and CTdDragListCtrl have in common"},
        {u"CTdSliderFrame"_s, "the pop-up of CTdEditSlider"},
    };
    const std::map<QString, bool> controls = publicControls();
    EXPECT_GT(controls.size(), 20u) << "the headers could not be read";
    for (const auto &[name, isForForms] : controls) {
        EXPECT_GE(pageOf(name), 0) << name.toStdString() << " is on no page of the window of controls";
        EXPECT_TRUE(!isForForms || notInForms.contains(name) || isInDesigner(name))
            << name.toStdString() << " is not in Designer's table";
    }
    for (const auto &[name, reason] : notInForms.asKeyValueRange())
        EXPECT_TRUE(controls.contains(name)) << name.toStdString() << ": " << reason;
}

TEST(ControlCoverage, EveryRowInDesignerIsOnAPageWithAPicture)
{
    const QString gallery = contentOf(u"desktop/GalleryWindows.cpp"_s);
    ControlsWindow window;
    for (const ControlRow &row : controlTable()) {
        const int index = pageOf(QString::fromLatin1(row.className));
        ASSERT_GE(index, 0) << row.className;
        window.showPage(index);
        const QList<QWidget *> widgets = window.page()->findChildren<QWidget *>();
        EXPECT_TRUE(std::any_of(widgets.begin(), widgets.end(),
                                [&row](const QWidget *widget) { return widget->inherits(row.className); }))
            << "no " << row.className << " on its page";
    }
    for (const ControlPage &page : controlPages())
        EXPECT_TRUE(gallery.contains(u"(\"%1\")"_s.arg(QLatin1StringView(page.title))))
            << page.title << " has no picture";
}

} // namespace
