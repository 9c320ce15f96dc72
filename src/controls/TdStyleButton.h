#pragma once

#include "common/TdCommonExport.h"

#include <QPushButton>

#include <functional>

/// A push button that shows a sample of a line, fill or symbol style.
///
/// What the sample looks like is the caller's: it hands in the function that draws it.
class TDCOMMON_API CTdStyleButton : public QPushButton
{
    Q_OBJECT

public:
    /// Draws the sample into a rectangle of the painter. It is clipped to that, and the painter's state is saved.
    using Sample = std::function<void(QPainter &, const QRect &)>;

    explicit CTdStyleButton(QWidget *parent = nullptr);
    ~CTdStyleButton() override;

    /// Shows what @p sample draws; an empty function for none.
    /// @param description what is to be seen, in words, for the tool tip and readers of the screen
    void SetSample(Sample sample, const QString &description = QString());

    /// What the sample is drawn on; white at first, since styles are made for maps and not for the user's palette.
    QColor GetSampleBackground() const { return m_background; }
    void SetSampleBackground(const QColor &color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Sample m_sample;
    QColor m_background = Qt::white;
};
