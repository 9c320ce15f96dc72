#pragma once

#include "DatasetJobs.h"

#include <QDialog>

#include <optional>

class CDatasetVector;
class CTxWorkspace;
class NewDatasetRows;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;

/// Asks at which distance and on which side parallel lines are made, and where they go.
class ParallelLineDialog : public QDialog
{
    Q_OBJECT
public:
    ParallelLineDialog(const CTxWorkspace &workspace, const CDatasetVector &source, QWidget *parent = nullptr);

    /// The distance in units of the coordinate system; nothing while none is entered. A decimal comma is read too.
    std::optional<double> distance() const;
    DatasetJobs::Side side() const;
    DatasetJobs::Place place() const;

private:
    void updateButtons();

    QLineEdit *m_distance;
    QComboBox *m_side;
    NewDatasetRows *m_rows;
    QDialogButtonBox *m_buttons;
};
