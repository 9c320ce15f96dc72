#pragma once

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// What reaches a PostgreSQL database. Empty members are left to the client library's own settings. A value type.
struct ConnectionParameters
{
    QString host;
    int port = 0; ///< 0 for the default
    QString database;
    QString user;
    QString password;
    QString schema;

    /// The parameters as the engine takes them: "PG:host='…' dbname='…'". Quotes and backslashes in values are escaped.
    QString connection() const;
};

/// Asks for a PostgreSQL database.
class ConnectionDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ConnectionDialog(QWidget *parent = nullptr);

    ConnectionParameters parameters() const;
    /// The connection string of what was entered.
    QString connection() const { return parameters().connection(); }

private:
    void update();

    QLineEdit *m_host;
    QSpinBox *m_port;
    QLineEdit *m_database;
    QLineEdit *m_user;
    QLineEdit *m_password;
    QLineEdit *m_schema;
    QDialogButtonBox *m_buttons;
};
