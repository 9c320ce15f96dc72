#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

struct ControlRow;

/// A control in Designer's widget box, as its row in the table says.
class ControlEntry : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    /// @param row outlives the entry
    ControlEntry(const ControlRow &row, QObject *parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget *createWidget(QWidget *parent) override;
    QString domXml() const override;

private:
    const ControlRow &m_row;
};
