#include "controls/TdStyleButton.h"

#include "controls/SampleButton.h"

#include <QPainter>

CTdStyleButton::CTdStyleButton(QWidget *parent) : QPushButton(parent) {}

CTdStyleButton::~CTdStyleButton() = default;

void CTdStyleButton::SetSample(Sample sample, const QString &description)
{
    m_sample = std::move(sample);
    setAccessibleDescription(description);
    setToolTip(description);
    update();
}

void CTdStyleButton::SetSampleBackground(const QColor &color)
{
    m_background = color;
    update();
}

QSize CTdStyleButton::sizeHint() const
{
    return SampleButton::sizeFor(*this, {fontMetrics().height() * 5, fontMetrics().height() + 6});
}

QSize CTdStyleButton::minimumSizeHint() const
{
    return SampleButton::sizeFor(*this, {fontMetrics().height(), fontMetrics().height()});
}

void CTdStyleButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = SampleButton::paintFrame(*this, painter);
    if (!isEnabled())
        painter.setOpacity(0.4);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(m_background);
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    const QRect inner = place.adjusted(1, 1, -1, -1);
    if (!m_sample || inner.isEmpty())
        return;
    painter.save();
    painter.setClipRect(inner);
    m_sample(painter, inner.adjusted(2, 2, -2, -2));
    painter.restore();
}
