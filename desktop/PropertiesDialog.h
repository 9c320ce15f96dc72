#pragma once

#include <QDialog>

class CTxDataset;
class CTxDataSource;
class QFormLayout;
class QTabWidget;
class QTreeWidget;

/// What is known of a dataset or a datasource. Reads it while it is made and keeps no pointer.
class PropertiesDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PropertiesDialog(const CTxDataset &dataset, QWidget *parent = nullptr);
    explicit PropertiesDialog(const CTxDataSource &dataSource, QWidget *parent = nullptr);

    /// The value shown under the caption @p caption, empty when there is none of that caption.
    QString value(const QString &caption) const;
    /// The list of fields, null for what has none.
    QTreeWidget *fields() const { return m_fields; }

private:
    void build(const QString &name);
    void addRow(const QString &caption, const QString &value);
    void addFields(const class CDatasetVector &dataset);
    void addDatasets(const CTxDataSource &dataSource);
    QTreeWidget *addList(const QString &title, const QStringList &columns);

    QTabWidget *m_tabs = nullptr;
    QFormLayout *m_form = nullptr;
    QTreeWidget *m_fields = nullptr;
};
