#include "colour/ColorsetTable.h"
#include "colour/TdDlgRibbon.h"
#include "common/TdColorChooser.h"
#include "common/TdFileChooser.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace Qt::Literals::StringLiterals;
using Stops = QList<CTdDlgRibbon::CStopInfo>;

constexpr COLORREF white = 0xFFFFFF;
constexpr COLORREF red = 0x0000FF;
constexpr COLORREF blue = 0xFF0000;

/// Answers for the user.
struct Answers : CTdColorChooser, CTdFileChooser
{
    Answers()
    {
        CTdColorChooser::SetCurrent(this);
        CTdFileChooser::SetCurrent(this);
    }
    ~Answers() override
    {
        CTdColorChooser::SetCurrent(nullptr);
        CTdFileChooser::SetCurrent(nullptr);
    }
    std::optional<COLORREF> ChooseColor(QWidget *, COLORREF initial, const QString &) override
    {
        seeds << initial;
        return color;
    }
    std::optional<QString> ChooseFileToOpen(QWidget *, const FileRequest &request) override
    {
        requests << request;
        return path;
    }
    std::optional<COLORREF> color;
    std::optional<QString> path;
    QList<COLORREF> seeds;
    QList<FileRequest> requests;
};

/// The dialog as it shows, with a temporary folder and a user of its own.
class DlgRibbon : public testing::Test
{
protected:
    DlgRibbon() : m_oldFolder(qgetenv("TMPDIR")) { qputenv("TMPDIR", QFile::encodeName(m_folder.path())); }
    ~DlgRibbon() override { m_oldFolder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_oldFolder); }

    void open(const Stops &stops = {})
    {
        m_dialog = std::make_unique<CTdDlgRibbon>();
        m_dialog->SetStops(stops);
        m_dialog->show();
        m_dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    /// Four stops, the first selected by none.
    void openFour() { open({{0, white, 0}, {0, red, 300}, {0, blue, 600}, {0, 0, 1000}}); }

    QWidget *control(int id) const { return m_dialog->GetDlgItem(id); }
    QLineEdit *edit(int id) const { return m_dialog->GetDlgItem<QLineEdit>(id); }
    QString text(int id) const { return edit(id)->text(); }
    QToolButton *button(const QString &name) const { return m_dialog->findChild<QToolButton *>(name); }
    QString path() const { return m_folder.filePath(u"ribbon.tmp"_s); }

    int bandBottom() const { return control(CTdDlgRibbon::RibbonFrame)->height() - 40; }
    int x(int stop) const { return m_dialog->GetStops()[stop].position; }
    QPoint marker(int stop) const { return {x(stop), bandBottom() + 12}; }
    void press(QPoint at) { QTest::mousePress(control(CTdDlgRibbon::RibbonFrame), Qt::LeftButton, {}, at); }
    void move(QPoint to) { drag(CTdDlgRibbon::RibbonFrame, to); }
    void release(QPoint at) { QTest::mouseRelease(control(CTdDlgRibbon::RibbonFrame), Qt::LeftButton, {}, at); }
    void click(QPoint at) { QTest::mouseClick(control(CTdDlgRibbon::RibbonFrame), Qt::LeftButton, {}, at); }
    void drag(int id, QPoint to)
    {
        QMouseEvent event(QEvent::MouseMove, to, control(id)->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(control(id), &event);
    }
    void key(Qt::Key key) { QTest::keyClick(m_dialog->focusWidget(), key); }
    void type(int id, const QString &text)
    {
        edit(id)->setFocus();
        edit(id)->selectAll();
        QTest::keyClicks(edit(id), text);
    }
    QList<double> values() const
    {
        QList<double> list;
        for (const CTdDlgRibbon::CStopInfo &stop : m_dialog->GetStops())
            list << stop.value;
        return list;
    }
    QList<COLORREF> colors() const
    {
        QList<COLORREF> list;
        for (const CTdDlgRibbon::CStopInfo &stop : m_dialog->GetStops())
            list << stop.color;
        return list;
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    const QTemporaryDir m_folder;
    const QByteArray m_oldFolder;
    Answers m_user;
    std::unique_ptr<CTdDlgRibbon> m_dialog;
};

TEST_F(DlgRibbon, OpensWithTheTemporaryRampAndIgnoresAnythingElseThere)
{
    ColorsetTable table;
    table.minimum = -5;
    table.maximum = 5;
    table.entries = {{-5, red}, {1, blue}};
    ASSERT_TRUE(table.save(path()));
    m_dialog = std::make_unique<CTdDlgRibbon>();
    m_dialog->SetMaxValue(100); // the temporary ramp has a range of its own
    m_dialog->show();
    EXPECT_EQ(values(), (QList<double>{-5, 1, 5}));
    EXPECT_EQ(text(39102), u"-5.00"_s);
    EXPECT_EQ(text(39101), u"5.00"_s);
    EXPECT_TRUE(text(39103).isEmpty()) << "nothing is selected";

    ASSERT_TRUE(QFile::rename(path(), m_folder.filePath(u"other"_s)));
    ASSERT_TRUE(QFile::link(m_folder.filePath(u"other"_s), path()));
    open();
    EXPECT_EQ(values(), (QList<double>{0, 1000})) << "a link may be another user's";
    ASSERT_TRUE(QFile::remove(path()));

    write(path(), "no ramp");
    open();
    EXPECT_EQ(values(), (QList<double>{0, 1000}));
    EXPECT_EQ(colors(), (QList<COLORREF>{white, 0}));

    table.maximum = table.minimum;
    ASSERT_TRUE(table.save(path()));
    open();
    EXPECT_EQ(values().first(), 0);
    EXPECT_EQ(values().last(), control(39100)->width() - 40) << "an empty range becomes the band's pixels";
}

TEST_F(DlgRibbon, DraggedStopPassesItsNeighbourOneMoveLateAndIsOneUndoStep)
{
    openFour();
    const Stops before = m_dialog->GetStops();
    QSignalSpy spy(m_dialog.get(), &CTdDlgRibbon::rampChanged);
    press(marker(1));
    EXPECT_EQ(text(39103), u"300.00"_s);
    EXPECT_EQ(text(39119) + u' ' + text(39120) + u' ' + text(39121), u"255 0 0"_s);
    EXPECT_EQ(m_dialog->focusWidget(), control(39100));
    const int beyond = x(2) + 20;
    move({beyond, 5});
    EXPECT_EQ(colors(), (QList<COLORREF>{white, red, blue, 0})) << "beyond its neighbour, and not swapped yet";
    move({beyond + 1, 5});
    EXPECT_EQ(colors(), (QList<COLORREF>{white, blue, red, 0}));
    move({beyond + 2, 5});
    EXPECT_EQ(x(2), beyond + 2) << "the dragged stop stayed selected";
    move({-500, 5});
    EXPECT_EQ(x(2), beyond + 2) << "outside of the band nothing moves";
    release({beyond, 5});
    EXPECT_TRUE(m_user.seeds.isEmpty()) << "the end of a drag in the band is no click there";
    EXPECT_EQ(spy.size(), 3);
    EXPECT_EQ(text(39103), QString::number(values()[2], 'f', 2));

    button(u"undoButton"_s)->click();
    EXPECT_EQ(m_dialog->GetStops(), before);
    QTest::keyClick(m_dialog.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(colors(), (QList<COLORREF>{white, blue, red, 0}));
    QTest::keyClick(m_dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_dialog->GetStops(), before);

    press(marker(0));
    move({x(0) + 50, 5});
    release({x(0), 5});
    EXPECT_EQ(m_dialog->GetStops(), before) << "the ends never move";
}

TEST_F(DlgRibbon, ClickInTheBandInsertsTheColourThatTheUserChooses)
{
    openFour();
    const int between = (x(1) + x(2)) / 2;
    click({between, 10});
    ASSERT_EQ(m_user.seeds.size(), 1);
    EXPECT_NEAR(TxColorRef::red(m_user.seeds[0]), 128, 4) << "the colour under the cursor is offered";
    EXPECT_EQ(colors().size(), 4) << "cancelled";
    m_user.color = 0x123456;
    click({between, 10});
    EXPECT_EQ(colors(), (QList<COLORREF>{white, red, 0x123456, blue, 0}));
    EXPECT_NEAR(values()[2], 450, 5);
    EXPECT_EQ(x(2), between);
    click({between, bandBottom() + 30});
    EXPECT_EQ(m_user.seeds.size(), 2) << "below the band is no insertion";

    m_user.color = 0x654321;
    QTest::mouseDClick(control(39100), Qt::LeftButton, {}, marker(1));
    EXPECT_EQ(colors()[1], 0x654321U);
    m_user.color = 0x111111;
    control(39122)->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(colors()[1], 0x111111U);
    EXPECT_TRUE(m_dialog->isVisible()) << "Enter on the swatch is not OK";
    m_dialog->findChild<QWidget *>(u"undoButton"_s)->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(colors()[1], 0x654321U);
    EXPECT_TRUE(m_dialog->isVisible()) << "nor on Undo";
}

TEST_F(DlgRibbon, KeysReachAndChangeEveryStop)
{
    openFour();
    control(39100)->setFocus(Qt::TabFocusReason);
    const std::pair<Qt::Key, QString> rows[] = {
        {Qt::Key_End, u"1000.00"_s},   {Qt::Key_PageDown, u"1000.00"_s}, {Qt::Key_PageUp, u"600.00"_s},
        {Qt::Key_Home, u"0.00"_s},     {Qt::Key_Left, u"0.00"_s},        {Qt::Key_PageDown, u"300.00"_s},
        {Qt::Key_Delete, u"600.00"_s}, // an interior stop; the next takes its place
    };
    for (const auto &[pressed, shown] : rows) {
        key(pressed);
        EXPECT_EQ(text(39103), shown) << pressed;
    }
    const int from = x(1);
    for (const auto &[pressed, by] :
         {std::pair(Qt::Key_Right, 1), {Qt::Key_Up, 2}, {Qt::Key_Left, 1}, {Qt::Key_Down, 0}}) {
        key(pressed);
        EXPECT_EQ(x(1), from + by);
    }
    key(Qt::Key_Insert);
    EXPECT_EQ(values().size(), 4) << "behind the selected stop, without a question";
    EXPECT_TRUE(m_user.seeds.isEmpty());
    key(Qt::Key_Delete);
    key(Qt::Key_End);
    key(Qt::Key_Delete);
    EXPECT_EQ(text(39101), text(39103)) << "the range ends at the new last stop";
    EXPECT_EQ(values().size(), 2);
    key(Qt::Key_Delete);
    EXPECT_EQ(values().size(), 2) << "the ends of two stay";

    control(39114)->setFocus();
    key(Qt::Key_Home);
    for (const auto &[pressed, shown] :
         {std::pair(Qt::Key_Left, u"254"_s), {Qt::Key_Up, u"255"_s}, {Qt::Key_Right, u"255"_s}}) {
        key(pressed);
        EXPECT_EQ(text(39120), shown);
    }
}

TEST_F(DlgRibbon, EditsCountOnlyWhileTheUserTypes)
{
    openFour();
    click(marker(1));
    for (const int id : {39101, 39102, 39103, 39119})
        edit(id)->setText(u"250"_s);
    EXPECT_EQ(values(), (QList<double>{0, 300, 600, 1000}));
    EXPECT_EQ(colors()[1], red);
    struct Row
    {
        int id;
        QString typed;
        QList<double> values;
    };
    const Row rows[] = {
        {39103, u"450.5"_s, {0, 450.5, 600, 1000}},
        {39103, u"x"_s, {0, 450.5, 600, 1000}},
        {39101, u"800"_s, {0, 450.5, 600, 800}},
        {39101, u"550"_s, {0, 450.5, 600, 800}}, // not above the stop before
        {39102, u"-1e1"_s, {-10, 450.5, 600, 800}},
        {39102, u"500"_s, {50, 450.5, 600, 800}}, // not below the stop behind, but 5 and 50 on the way are
    };
    for (const Row &row : rows) {
        type(row.id, row.typed);
        EXPECT_EQ(values(), row.values) << row.id << ' ' << row.typed.toStdString();
        EXPECT_EQ(text(row.id), row.typed) << "stays as typed";
    }
    type(39121, u"77"_s);
    EXPECT_EQ(colors()[1], 0x4D00FFU);
    type(39121, u"300"_s);
    EXPECT_EQ(colors()[1], 0x1E00FFU) << "30 on the way; 300 is none";
    button(u"reverseButton"_s)->click();
    EXPECT_EQ(m_dialog->focusWidget(), edit(39121));
    button(u"undoButton"_s)->click();
    EXPECT_EQ(colors()[1], 0x1E00FFU) << "a command is a step of its own while an edit has the focus";
    button(u"undoButton"_s)->click();
    EXPECT_EQ(colors()[1], red) << "what was typed in one edit is one step";

    click(marker(3));
    type(39103, u"700"_s);
    EXPECT_EQ(values().last(), 800) << "an end stop stays at the end of the range";
    EXPECT_EQ(m_dialog->GetStops().last().position, control(39100)->width() - 20);
}

TEST_F(DlgRibbon, SliderMovesByItsTriangleAndAClickBesideClearsTheSelection)
{
    openFour();
    click(marker(1));
    auto *slider = m_dialog->GetDlgItem<QAbstractSlider>(39114);
    const auto dragFrom = [&](QPoint from) {
        QTest::mousePress(slider, Qt::LeftButton, {}, from);
        drag(39114, {slider->width() / 2, 0});
        QTest::mouseRelease(slider, Qt::LeftButton, {}, {slider->width() / 2, 0});
    };
    dragFrom({slider->width() - 20, 8});
    EXPECT_EQ(text(39120), u"0"_s) << "not the triangle";
    dragFrom({7, 22}); // the triangle of 0 begins 4 left of the gradient
    EXPECT_NEAR(TxColorRef::green(colors()[1]), 127, 2);
    EXPECT_EQ(text(39120), QString::number(TxColorRef::green(colors()[1])));
    QTest::mouseClick(m_dialog.get(), Qt::LeftButton, {}, {2, 2});
    EXPECT_TRUE(text(39103).isEmpty());
    EXPECT_FALSE(slider->isEnabled());
}

TEST_F(DlgRibbon, OkSamplesAndKeepsTheRampAndNeverFollowsALink)
{
    const QString precious = m_folder.filePath(u"precious"_s);
    write(precious, "mine");
    ASSERT_TRUE(QFile::link(precious, path()));
    openFour();
    m_dialog->reject();
    EXPECT_TRUE(QFileInfo(path()).isSymLink()) << "Cancel keeps nothing";
    m_dialog->findChild<QComboBox *>()->setCurrentIndex(4);
    QList<COLORREF> colors = {1};
    m_dialog->accept();
    m_dialog->GetColor(colors);
    EXPECT_TRUE(colors.isEmpty()) << "none were asked for, and the ramp is kept all the same";
    QFile file(precious);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "mine");
    EXPECT_FALSE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(QDir(m_folder.path()).entryList({u"ribbon*"_s}, QDir::Files).size(), 1) << "no leavings";

    open();
    EXPECT_EQ(values(), (QList<double>{0, 300, 600, 1000}));
    m_dialog->SetStopCount(10);
    m_dialog->findChild<QComboBox *>()->setCurrentIndex(4);
    m_dialog->accept();
    m_dialog->GetColor(colors);
    ASSERT_EQ(colors.size(), 10);
    EXPECT_NEAR(TxColorRef::blue(colors[3]), 0, 3) << "the preview leaves the colours alone";
    EXPECT_NEAR(TxColorRef::red(colors[3]), 255, 3);
}

TEST_F(DlgRibbon, ImportAndExportBothAskForAFileToOpen)
{
    openFour();
    const auto push = [this](const char *name) {
        m_dialog->findChild<QAbstractButton *>(QString::fromLatin1(name))->click();
    };
    push("exportButton");
    push("importButton");
    ASSERT_EQ(m_user.requests.size(), 2);
    for (const CTdFileChooser::FileRequest &request : m_user.requests) {
        EXPECT_EQ(request.filter, u"Terravox 3D Colorset (*.sct)|*.sct||"_s);
        EXPECT_EQ(request.defaultExtension + request.initial, u"SCT.SCT"_s);
    }
    EXPECT_FALSE(m_user.requests[0].mustExist);
    EXPECT_TRUE(m_user.requests[1].mustExist);

    m_user.path = m_folder.filePath(u"a.sct"_s);
    push("exportButton");
    button(u"reverseButton"_s)->click();
    EXPECT_EQ(values(), (QList<double>{0, 400, 700, 1000}));
    EXPECT_EQ(colors().first(), 0U);
    button(u"distributeButton"_s)->click();
    EXPECT_NEAR(values()[1], 1000.0 / 3, 1e-9);
    push("importButton");
    EXPECT_EQ(values(), (QList<double>{0, 300, 600, 1000}));
    for (const QString &bad : {m_folder.path(), m_folder.filePath(u"none/none.sct"_s)}) {
        m_user.path = bad;
        push("exportButton");
        push("importButton");
    }
    EXPECT_EQ(values(), (QList<double>{0, 300, 600, 1000})) << "failures are silent";
    for (int i = 0; i < 3; ++i)
        button(u"undoButton"_s)->click();
    EXPECT_FALSE(button(u"undoButton"_s)->isEnabled());
    EXPECT_EQ(values(), (QList<double>{0, 300, 600, 1000}));
}

TEST_F(DlgRibbon, TellsWhatReadersMayNotSeeAndWhyANumberIsNotTaken)
{
    open({{0, 0x1E1EC8, 0}, {0, 0x1E8C3C, 300}, {0, 0xF0F0F0, 600}, {0, 0x643200, 1000}});
    const auto *message = m_dialog->findChild<QLabel *>(u"messageLabel"_s);
    const auto comes = [message](const QString &text) {
        return QTest::qWaitFor([&] { return message->text().contains(text); }, 2000);
    };
    auto *vision = m_dialog->findChild<QComboBox *>();
    auto *preview = m_dialog->findChild<QWidget *>(u"preview"_s);
    EXPECT_TRUE(comes(u"Stops 1 and 2 look alike"_s));
    EXPECT_TRUE(comes(u"lightness turns"_s));
    EXPECT_FALSE(preview->isVisible());
    vision->setCurrentIndex(2); // deuteranopia
    EXPECT_TRUE(comes(u"Stops 1 and 2 look alike"_s));
    EXPECT_TRUE(preview->isVisible());
    const QImage seen = preview->grab().toImage();
    const QColor first = seen.pixelColor(25, seen.height() / 2);
    EXPECT_LT(first.red() - first.green(), 100) << "red is olive to those without green cones";
    click(marker(1));
    type(39103, u"700"_s);
    EXPECT_TRUE(comes(u"between 0.00 and 600.00"_s));
    EXPECT_EQ(edit(39103)->accessibleDescription(), message->text());
    key(Qt::Key_Return);
    EXPECT_TRUE(m_dialog->isVisible()) << "not with another number than shows";
    EXPECT_EQ(edit(39103)->selectedText(), u"700"_s);
    type(39103, u"400"_s);
    key(Qt::Key_Return);
    EXPECT_FALSE(m_dialog->isVisible()) << "OK is the default";
}

TEST_F(DlgRibbon, ClosedDuringADragEndsIt)
{
    openFour();
    press(marker(1));
    m_dialog->reject();
    m_dialog->show();
    m_dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    control(39100)->setFocus();
    key(Qt::Key_PageUp);
    key(Qt::Key_PageDown);
    const int from = x(1);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    button(u"undoButton"_s)->click();
    EXPECT_EQ(x(1), from + 1) << "a step each";
}

TEST_F(DlgRibbon, StopsAreItemsOfAListToReadersOfTheScreen)
{
    openFour();
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(control(39100));
    ASSERT_EQ(list->childCount(), 4);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), u"Stop 2 of 4: value 300.00; red 255, green 0, blue 0"_s);
    list->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(text(39103), u"300.00"_s);
    EXPECT_TRUE(list->child(1)->state().selected);
    control(39100)->setFocus();
    key(Qt::Key_PageUp);
    ASSERT_TRUE(list->focusChild());
    EXPECT_EQ(list->indexOfChild(list->focusChild()), 0);
}

} // namespace
