#pragma once

#include "engine/data/ElemDatasetInfo.h"
#include "engine/map/TxLayerStyle.h"

#include <QDialog>
#include <QSet>

class CTdColorButton;
class CTdNumEdit;
class CTdStyleButton;
class LayerStylePreview;
class QDialogButtonBox;
class QFormLayout;
class QLabel;

/// Asks for the looks of a layer: the line, the fill, the symbol and the colour of texts, as far as its kind has them,
/// and the opacity of the whole. It only asks: the host shows what is applied, and takes it back on Cancel.
///
/// Only what the user changes is changed: what the fields cannot show, the opacity of a colour among it, stays.
class LayerStyleDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param layerName whose looks they are
    /// @param kind of the layer's dataset
    /// @param style what it begins with
    /// @param background what the map lies on
    LayerStyleDialog(const QString &layerName, CElemDatasetInfo::Type kind, const TxLayerStyle &style,
                     const QColor &background, QWidget *parent = nullptr);

    /// The style that is chosen now.
    const TxLayerStyle &style() const { return m_style; }

Q_SIGNALS:
    /// The user wants to see style() on the map.
    void applied();

private:
    struct Number;
    void addPart(QFormLayout &form, quint32 part);
    void addColours(QFormLayout &form, quint32 part);
    /// Gives the labels of all groups one width.
    void alignFields();
    void addNumber(QFormLayout &form, const Number &number);
    void takeNumber(const Number &number, const CTdNumEdit &edit);
    void showStyle();
    void updateState();

    static const Number numbers[];

    const quint32 m_parts;
    TxLayerStyle m_style;
    LayerStylePreview *m_preview;
    QLabel *m_problem;
    QDialogButtonBox *m_buttons;
    QList<CTdStyleButton *> m_styleButtons;
    QList<std::pair<CTdColorButton *, QColor CTxGeoStyle::*>> m_colours;
    QList<std::pair<CTdNumEdit *, const Number *>> m_numbers;
    QSet<const Number *> m_wrong; // whose texts are no numbers in range
    bool m_isShowing = false;     // the fields are being filled
};
