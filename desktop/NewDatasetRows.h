#pragma once

#include <QObject>
#include <QString>

#include <functional>

class CTxDataSource;
class CTxWorkspace;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

/// The rows of a form that ask where a new dataset is made and what it is called: the datasources that can take it, a
/// free name, and below it what is wrong with the name that was entered.
class NewDatasetRows : public QObject
{
    Q_OBJECT
public:
    /// @param form gets the rows
    /// @param proposal what to call the dataset; a free name is made of it in each datasource until the user writes one
    /// @param canTake which of the datasources that can make datasets are listed
    /// @param preferred the one that is chosen at first, by its alias
    NewDatasetRows(const CTxWorkspace &workspace, const QString &proposal,
                   const std::function<bool(const CTxDataSource &)> &canTake, const QString &preferred,
                   QFormLayout *form);

    /// The datasource that is chosen, null when there is none to choose.
    CTxDataSource *dataSource() const;
    QString name() const;
    /// True when a dataset of that name can be made there.
    bool isValid() const;
    QComboBox *sourceBox() const { return m_sources; }
    QLineEdit *nameEdit() const { return m_name; }

Q_SIGNALS:
    void changed();

private:
    void propose();
    void check();

    const CTxWorkspace &m_workspace;
    const QString m_proposal;
    QComboBox *m_sources;
    QLineEdit *m_name;
    QLabel *m_problem;
    bool m_isOwnName = false; // the user has written it
};
