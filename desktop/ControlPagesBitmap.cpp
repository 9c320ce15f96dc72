#include "ControlPages.h"

#include "common/TdFileChooser.h"
#include "controls/DIB.h"
#include "controls/TdAutoWidthComboBox.h"
#include "controls/TdNumEdit.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int depths[] = {1, 4, 8, 24, 32};
constexpr char filter[] =
    QT_TRANSLATE_NOOP("ControlPages", "Images|*.png;*.bmp;*.jpg;*.jpeg;*.gif;*.tif|All files|*||");

/// A picture of made-up heights, of many colours in soft steps.
CDIB firstPicture()
{
    constexpr int width = 240, height = 160, steps = 256;
    CTxColorFolder colors;
    colors.MakeStockGradient(steps, static_cast<qint32>(TxStockGradient::Hypsometric));
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double u = x / 34.0, v = y / 27.0;
            const double relief = 0.5 + 0.28 * std::sin(u) * std::cos(v) + 0.17 * std::sin(2.3 * v + u);
            image.setPixel(x, y, TxColorRef::toRgb(colors.GetAt(static_cast<int>(relief * steps))));
        }
    }
    return CDIB(image);
}

/// Shows a bitmap as large as there is room, never larger than twice its size.
class BitmapView : public QWidget
{
public:
    explicit BitmapView(const CDIB &bitmap) : m_bitmap(bitmap)
    {
        setMinimumSize(120, 120);
        setAccessibleName(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "Picture")));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QSize whole(m_bitmap.GetWidth(), m_bitmap.GetHeight());
        const QSize size = whole.scaled(this->size().boundedTo(whole * 2), Qt::KeepAspectRatio);
        const QRect place({(width() - size.width()) / 2, 0}, size);
        painter.fillRect(place, QBrush(Qt::lightGray, Qt::Dense4Pattern)); // where the picture is transparent
        m_bitmap.Draw(painter, place);
    }

private:
    const CDIB &m_bitmap; ///< the page's
};

/// The page: the picture as it was loaded goes through width and depth into the one that is shown and saved.
class BitmapPage : public QWidget
{
public:
    BitmapPage(QWidget *parent, const ShowValue &show);

private:
    void open();
    void save();
    void convert();
    void tell(const QString &problem = QString());

    const ShowValue m_show;
    CDIB m_original = firstPicture();
    CDIB m_bitmap;
    BitmapView *m_view = new BitmapView(m_bitmap);
    CTdAutoWidthComboBox *m_depth = new CTdAutoWidthComboBox;
    QCheckBox *m_dither;
    CTdNumEdit *m_percent = new CTdNumEdit;
};

BitmapPage::BitmapPage(QWidget *parent, const ShowValue &show) : QWidget(parent), m_show(show)
{
    using ControlPages::text;
    for (const int depth : depths)
        m_depth->addItem(text(QT_TRANSLATE_NOOP("ControlPages", "%1 bits")).arg(depth), depth);
    m_depth->setCurrentIndex(1);
    m_dither = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "D&ither")));
    m_dither->setChecked(true);
    m_percent->SetEditMode(NumberInput::Whole);
    m_percent->SetRange(0, 400);
    m_percent->SetValue(100);
    m_percent->setFixedWidth(70);
    m_depth->setFixedWidth(70);
    auto *openButton = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Open…")));
    auto *saveButton = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Save as…")));
    auto *form = new QFormLayout;
    form->addRow(openButton);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Depth:")), m_depth);
    form->addRow(QString(), m_dither);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "Si&ze in percent:")), m_percent);
    form->addRow(saveButton);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(form);
    layout->addSpacing(9);
    layout->addWidget(m_view, 1);
    for (QPushButton *button : {openButton, saveButton})
        button->setAutoDefault(false);
    connect(openButton, &QPushButton::clicked, this, &BitmapPage::open);
    connect(saveButton, &QPushButton::clicked, this, &BitmapPage::save);
    connect(m_depth, &QComboBox::currentIndexChanged, this, &BitmapPage::convert);
    connect(m_dither, &QCheckBox::toggled, this, &BitmapPage::convert);
    connect(m_percent, &QLineEdit::textEdited, this, &BitmapPage::convert);
    convert();
}

void BitmapPage::open()
{
    CTdFileChooser::FileRequest request;
    request.filter = ControlPages::text(filter);
    const auto path = CTdFileChooser::GetCurrent().ChooseFileToOpen(window(), request);
    QString problem;
    if (!path)
        return;
    if (!m_original.Load(*path, &problem)) // what was there stays
        return tell(problem);
    m_percent->SetValue(100);
    convert();
}

void BitmapPage::save()
{
    CTdFileChooser::FileRequest request;
    request.filter = ControlPages::text(filter);
    request.defaultExtension = u"png"_s;
    const auto path = CTdFileChooser::GetCurrent().ChooseFileToSave(window(), request);
    QString problem;
    if (path && m_bitmap.Save(*path, QByteArray(), &problem))
        problem = ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "Saved as %1")).arg(QFileInfo(*path).fileName());
    if (path)
        tell(problem);
}

void BitmapPage::convert()
{
    CDIB bitmap = m_original;
    const double scale = m_percent->GetValueL() / 100.0;
    const int width = static_cast<int>(std::lround(bitmap.GetWidth() * scale));
    const int height = static_cast<int>(std::lround(bitmap.GetHeight() * scale));
    if (!bitmap.Scale(width, height))
        return tell(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "A picture cannot have %1 × %2 pixels."))
                        .arg(width)
                        .arg(height));
    const int depth = m_depth->currentData().toInt();
    m_dither->setEnabled(depth <= 8);
    bitmap.ConvertTo(depth, m_dither->isChecked());
    m_bitmap = bitmap;
    m_view->update();
    tell();
}

void BitmapPage::tell(const QString &problem)
{
    if (!problem.isEmpty())
        return m_show(problem);
    const qsizetype bytes = m_bitmap.GetRowBytes() * m_bitmap.GetHeight();
    m_show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "%1 × %2 pixels of %3 bits · %4"))
               .arg(m_bitmap.GetWidth())
               .arg(m_bitmap.GetHeight())
               .arg(m_bitmap.GetBitCount())
               .arg(QLocale().formattedDataSize(bytes)));
}

} // namespace

QWidget *ControlPages::makeBitmap(QWidget *parent, const ShowValue &show)
{
    return new BitmapPage(parent, show);
}
