#pragma once

#include "colour/ColorVision.h"

#include <QWidget>

class RibbonColumns;

/// A strip that shows the ribbon above it as people with a colour-vision deficiency see it.
class RibbonPreview : public QWidget
{
    Q_OBJECT

public:
    explicit RibbonPreview(QWidget *parent = nullptr);

    /// @p columns are not owned and must live as long as this; null for none.
    void setColumns(const RibbonColumns *columns) { m_columns = columns; }
    ColorVision::Deficiency deficiency() const { return m_deficiency; }
    void setDeficiency(ColorVision::Deficiency deficiency);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const RibbonColumns *m_columns = nullptr;
    ColorVision::Deficiency m_deficiency = ColorVision::Deficiency::None;
};
