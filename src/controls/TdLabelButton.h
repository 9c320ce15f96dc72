#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QPushButton>

#include <optional>

/// A push button that shows a sample text in the font and colour of labels, and lets the user choose another font.
class TDCOMMON_API CTdLabelButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(QFont labelFont READ GetLabelFont WRITE SetLabelFont)
    Q_PROPERTY(QString sampleText READ GetSampleText WRITE SetSampleText)

public:
    explicit CTdLabelButton(QWidget *parent = nullptr);
    ~CTdLabelButton() override;

    /// The font of labels; the button's own texts keep the application's.
    QFont GetLabelFont() const { return m_labelFont; }
    /// Shows the sample in @p font, silently.
    void SetLabelFont(const QFont &font);

    /// The colour of the sample; nothing (so at first) for the colour of the palette's texts.
    std::optional<COLORREF> GetLabelColor() const { return m_labelColor; }
    void SetLabelColor(std::optional<COLORREF> color);

    /// The text that is shown as the sample; an empty one brings the usual one back.
    void SetSampleText(const QString &text);
    QString GetSampleText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has chosen another font.
    void labelFontChosen(const QFont &font);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void chooseFont();
    void describe();

    QFont m_labelFont;
    std::optional<COLORREF> m_labelColor;
    QString m_sampleText;
};
