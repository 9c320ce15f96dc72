#pragma once

#include "DatasetJobs.h"

#include <QDialog>

#include <array>

class CTxMapWnd;
class CTxWorkspace;
class DatasetChooser;
class Prompts;
class QCheckBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;

/// Asks what is appended to a dataset: the records of another one, or for rasters the cells of another one or of an
/// image file.
class AppendDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param target the dataset that is chosen at first; null for none
    /// @param view the map in front, whose part of the plane can be the bounds; may be null
    AppendDialog(const CTxWorkspace &workspace, const CTxDataset *target, const CTxMapWnd *view, Prompts &prompts,
                 QWidget *parent = nullptr);

    CTxDataset *target() const;
    /// The dataset to take from; null when it is an image file.
    CTxDataset *source() const;
    /// The image file to take from; its path is empty when it is a dataset.
    DatasetJobs::ImageFile image() const;
    QString tagField() const;
    /// What records are taken from, in the target's coordinate system; void for everywhere.
    CRect2D bounds() const;
    /// Whether cells that hold data are replaced.
    bool replaces() const;

private:
    void fillFileRow(Prompts &prompts);
    void fillPlaceRow();
    void onTargetChanged();
    void updateButtons();
    QString problem() const;
    CRect2D viewBounds() const;
    /// The bounds entered for the image file. @return false when they are incomplete or no rectangle.
    bool readPlace(CRect2D &place) const;

    const CTxMapWnd *m_view; // not owned
    DatasetChooser *m_target;
    DatasetChooser *m_source;
    QFormLayout *m_form;
    QWidget *m_fileRow;
    QLineEdit *m_file;
    QWidget *m_placeRow;
    std::array<QLineEdit *, 4> m_place; // left, bottom, right, top
    QLineEdit *m_tag;
    QCheckBox *m_onlyView;
    QCheckBox *m_replace;
    QLabel *m_problem;
    QDialogButtonBox *m_buttons;
};
