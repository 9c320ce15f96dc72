#pragma once

#include <QWidget>

#include <functional>

class CTxDataset;
class CTxWorkspace;
class QComboBox;

/// Two boxes side by side that choose a dataset: the datasources that have one that fits, and these of the one chosen.
class DatasetChooser : public QWidget
{
    Q_OBJECT
public:
    using Filter = std::function<bool(const CTxDataset &)>;

    /// @param name what is chosen, for screen readers
    DatasetChooser(const CTxWorkspace &workspace, const QString &name, QWidget *parent = nullptr);

    /// Lists the datasets that @p fits lets pass; what was chosen stays if it is among them, else it is @p preferred
    /// (may be null), else the first.
    void setFilter(const Filter &fits, const CTxDataset *preferred = nullptr);
    void choose(const CTxDataset *dataset);
    /// The dataset that is chosen, null when there is none to choose.
    CTxDataset *dataset() const;
    QComboBox *datasetBox() const { return m_datasets; }

Q_SIGNALS:
    void changed();

private:
    void fillDatasets();

    const CTxWorkspace &m_workspace;
    Filter m_fits;
    QComboBox *m_sources;
    QComboBox *m_datasets;
};
