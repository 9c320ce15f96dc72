#pragma once

#include "common/TdCommonExport.h"

#include <QObject>

#include <chrono>
#include <memory>

/// Offers CTdColors to other programs on the session bus, under the name Terravox.TdColors. docs/automation.md tells
/// what they see. It lives and works in the application's thread.
class TDCOMMON_API ColorsServer : public QObject
{
    Q_OBJECT

public:
    /// The name on the bus, and the path of the factory there.
    static const char *const serviceName;
    static const char *const factoryPath;

    explicit ColorsServer(QObject *parent = nullptr);
    /// The clients' objects go too.
    ~ColorsServer() override;

    /// Begins to serve. @return false, with a line in the log, when there is no session bus or another program serves
    bool start();
    /// Keeps the application running until clients have held no object for @p time. Without it their objects keep it
    /// running, and no more.
    void linger(std::chrono::milliseconds time);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
