#include "controls/TdLabelButton.h"

#include "common/TdModule.h"
#include "controls/SampleButton.h"
#include "res/StringId.h"

#include <QEvent>
#include <QFontDialog>
#include <QFontInfo>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>

CTdLabelButton::CTdLabelButton(QWidget *parent) : QPushButton(parent), m_labelFont(font())
{
    setAutoDefault(false);
    describe();
    connect(this, &QPushButton::clicked, this, &CTdLabelButton::chooseFont);
}

CTdLabelButton::~CTdLabelButton() = default;

void CTdLabelButton::SetLabelFont(const QFont &font)
{
    m_labelFont = font;
    describe();
    update();
}

void CTdLabelButton::SetLabelColor(std::optional<COLORREF> color)
{
    m_labelColor = color;
    update();
}

void CTdLabelButton::SetSampleText(const QString &text)
{
    m_sampleText = text;
    update();
}

QString CTdLabelButton::GetSampleText() const
{
    return m_sampleText.isEmpty() ? CTdModule::LoadString(TdStringId::LabelButtonSample) : m_sampleText;
}

void CTdLabelButton::describe()
{
    setAccessibleName(CTdModule::LoadString(TdStringId::LabelButtonName));
    const QFontInfo info(m_labelFont);
    setAccessibleDescription(
        QStringLiteral("%1, %2 pt").arg(m_labelFont.family(), QString::number(info.pointSizeF(), 'g', 4)));
    setToolTip(accessibleDescription());
}

QSize CTdLabelButton::sizeHint() const
{
    // The button's own font decides: a label of 72 points must not tear the dialog apart.
    return SampleButton::sizeFor(*this, {fontMetrics().horizontalAdvance(GetSampleText()) + fontMetrics().height(),
                                         fontMetrics().height() * 3 / 2});
}

QSize CTdLabelButton::minimumSizeHint() const
{
    return SampleButton::sizeFor(*this, {fontMetrics().height() * 2, fontMetrics().height()});
}

void CTdLabelButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = SampleButton::paintFrame(*this, painter);
    QFont shown = m_labelFont;
    const QFontMetrics metrics(shown);
    const QSize wanted(metrics.horizontalAdvance(GetSampleText()), metrics.height());
    // Shown smaller where it would not fit, so that the face is seen and not a piece of a letter.
    const double scale = std::min({1.0, place.width() / std::max(1.0, double(wanted.width())),
                                   place.height() / std::max(1.0, double(wanted.height()))});
    if (scale < 1.0)
        shown.setPointSizeF(std::max(1.0, QFontInfo(m_labelFont).pointSizeF() * scale));
    painter.setFont(shown);
    const bool isOwnColor = m_labelColor && isEnabled();
    painter.setPen(isOwnColor ? TxColorRef::toQColor(*m_labelColor) : palette().color(QPalette::ButtonText));
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, GetSampleText());
}

void CTdLabelButton::keyPressEvent(QKeyEvent *event)
{
    if (SampleButton::isOpeningKey(event->key()))
        click();
    else
        QPushButton::keyPressEvent(event);
}

void CTdLabelButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        describe();
}

void CTdLabelButton::chooseFont()
{
    // On the heap: the window may go while the dialog is open, and takes it along.
    const QPointer<QFontDialog> dialog = new QFontDialog(m_labelFont, window());
    const QPointer<CTdLabelButton> alive(this);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    const QFont font = accepted ? dialog->selectedFont() : QFont();
    delete dialog;
    if (!alive || !accepted || font == m_labelFont)
        return;
    SetLabelFont(font);
    Q_EMIT labelFontChosen(font);
}
