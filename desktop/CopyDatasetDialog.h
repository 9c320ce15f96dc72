#pragma once

#include "DatasetJobs.h"

#include <QDialog>

class CTxWorkspace;
class NewDatasetRows;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;

/// Asks where a dataset is copied to, under which name and in which encoding.
class CopyDatasetDialog : public QDialog
{
    Q_OBJECT
public:
    CopyDatasetDialog(const CTxWorkspace &workspace, const CTxDataset &source, QWidget *parent = nullptr);

    /// Where the copy is to be made.
    DatasetJobs::Place place() const;

private:
    void updateButtons();

    QFormLayout *m_form;
    NewDatasetRows *m_rows;
    QComboBox *m_encoding;
    QDialogButtonBox *m_buttons;
};
