#pragma once

#include "common/TdCommonExport.h"
#include "controls/TdStyle.h"
#include "engine/symbol/TxGeoStyle.h"

#include <QPushButton>

/// A push button that shows a sample of a line style, a fill or a point symbol, and lets the user choose another in a
/// dialog: by a click, Space, Enter, F4 or the down key.
class TDCOMMON_API CTdStyleButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(TdStyle::Kind kind READ GetKind WRITE SetKind)

public:
    explicit CTdStyleButton(QWidget *parent = nullptr);
    /// A button for the part @p kind of styles.
    explicit CTdStyleButton(TdStyle::Kind kind, QWidget *parent = nullptr);
    ~CTdStyleButton() override;

    /// Which part of the style is shown and chosen; the line at first.
    TdStyle::Kind GetKind() const { return m_kind; }
    void SetKind(TdStyle::Kind kind);

    /// The style, with all its parts.
    const CTxGeoStyle &GetStyle() const { return m_style; }
    /// Shows @p style, silently.
    void SetStyle(const CTxGeoStyle &style);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has chosen another style; the parts of other kinds are as they were.
    void styleChosen(const CTxGeoStyle &style);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void chooseStyle();
    void describe();

    TdStyle::Kind m_kind;
    CTxGeoStyle m_style;
};
