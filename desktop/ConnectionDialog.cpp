#include "ConnectionDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

QString quoted(QString value)
{
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

} // namespace

QString ConnectionParameters::connection() const
{
    QStringList parts;
    const auto add = [&parts](const QString &key, const QString &value) {
        if (!value.isEmpty())
            parts << key + QLatin1Char('=') + quoted(value);
    };
    add(QStringLiteral("host"), host);
    add(QStringLiteral("port"), port > 0 ? QString::number(port) : QString());
    add(QStringLiteral("dbname"), database);
    add(QStringLiteral("user"), user);
    add(QStringLiteral("password"), password);
    add(QStringLiteral("active_schema"), schema);
    return QStringLiteral("PG:") + parts.join(QLatin1Char(' '));
}

ConnectionDialog::ConnectionDialog(QWidget *parent)
    : QDialog(parent), m_host(new QLineEdit), m_port(new QSpinBox), m_database(new QLineEdit), m_user(new QLineEdit),
      m_password(new QLineEdit), m_schema(new QLineEdit),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Open Database"));
    m_host->setPlaceholderText(tr("this machine"));
    m_port->setRange(0, 65535);
    m_port->setSpecialValueText(tr("default"));
    m_database->setPlaceholderText(tr("required"));
    m_user->setPlaceholderText(tr("the user logged in"));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setPlaceholderText(tr("from the password file"));
    m_schema->setPlaceholderText(QStringLiteral("public"));
    m_host->setMinimumWidth(fontMetrics().averageCharWidth() * 44);

    auto *form = new QFormLayout;
    form->addRow(tr("&Host:"), m_host);
    form->addRow(tr("P&ort:"), m_port);
    form->addRow(tr("&Database:"), m_database);
    form->addRow(tr("&User:"), m_user);
    form->addRow(tr("&Password:"), m_password);
    form->addRow(tr("&Schema:"), m_schema);
    auto *note = new QLabel(tr("A password entered here is saved with the workspace, readable by anyone who can read "
                               "the file. The client's own password file is the safer place."));
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addSpacing(6);
    layout->addWidget(note);
    layout->addSpacing(6);
    layout->addWidget(m_buttons);

    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Open"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_database, &QLineEdit::textChanged, this, &ConnectionDialog::update);
    m_database->setFocus();
    update();
}

ConnectionParameters ConnectionDialog::parameters() const
{
    return {m_host->text().trimmed(), m_port->value(),    m_database->text().trimmed(),
            m_user->text().trimmed(), m_password->text(), m_schema->text().trimmed()};
}

void ConnectionDialog::update()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!m_database->text().trimmed().isEmpty());
}
