#include "controls/ToolBarButton.h"

#include <QMainWindow>

QWidget *ToolBarButton::frameOf(const QWidget &control)
{
    for (QWidget *around = control.parentWidget(); around; around = around->parentWidget()) {
        if (qobject_cast<QMainWindow *>(around))
            return around;
    }
    return control.window();
}

ToolBarButton::StreamFormat::StreamFormat(QDataStream &stream)
    : m_stream(stream), m_order(stream.byteOrder()), m_precision(stream.floatingPointPrecision()),
      m_version(stream.version())
{
    stream.setVersion(QDataStream::Qt_6_0);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
}

ToolBarButton::StreamFormat::~StreamFormat()
{
    m_stream.setVersion(m_version);
    m_stream.setByteOrder(m_order);
    m_stream.setFloatingPointPrecision(m_precision);
}
