#pragma once

#include "colour/ColorSetModel.h"
#include "colour/CurrentColor.h"
#include "common/TdFileChooser.h"
#include "ui_TdIDEDlgColorSet.h"

#include <QMessageBox>
#include <QObject>

#include <array>
#include <optional>

class CTdIDEDlgColorSet;

/// The controls of the dialog "Edit Colorset", and what its buttons do. The colours stand in two lists, the model's and
/// the list box's, and every change goes to both.
///
/// An object of its own, so that its connections end with it: the controls outlive it, and tell of their own end.
class TdIDEDlgColorSetPrivate : public QObject
{
public:
    TdIDEDlgColorSetPrivate(CTdIDEDlgColorSet *dialog, COLORREF initial);

    /// Shows everything as it is before the user does anything.
    void showAll();
    /// Takes the colours and the range that show as the result. @return false, with the bad end of the range selected,
    /// when the range cannot be one
    bool takeResult();

    ColorSetModel model;
    CurrentColor color;
    CTxColorsetEx result;

private:
    void connectPicker();
    void connectList();
    void connectRange();
    void connectPanel();

    void showColor();
    void showList();
    void showRange();
    void showEnd();
    /// Lets those buttons be pushed that would do something now.
    void updateButtons();

    void add();
    void insert();
    void apply();
    void remove();
    void removeAll();
    void takeFromList();
    void setPanelOpen(bool open);
    std::optional<ColorSetModel::SubRange> subRange() const;
    void fill(void (ColorSetModel::*generator)(ColorSetModel::SubRange, bool));
    void fillStock(int item);
    void drawRamp(ColorSetModel::SubRange range);
    void load();
    void save();

    void readRange();
    /// Gives the focus to the end of the range that keeps it from being used. @return false when there is none
    bool refuseRange();
    void inform(quint32 textId) const;
    /// Shows a message and waits for the answer. The dialog may be gone then; the answer is no button in this case.
    QMessageBox::StandardButton ask(const QString &text, QMessageBox::Icon icon,
                                    QMessageBox::StandardButtons buttons) const;
    CTdFileChooser::FileRequest fileRequest() const;

    CTdIDEDlgColorSet *const q;
    Ui::CTdIDEDlgColorSet ui;
    const COLORREF m_old; // what the picker showed at first
    std::array<NumberSpinBox *, CurrentColor::partCount> m_parts = {};
    bool m_panelOpen = false;
};
