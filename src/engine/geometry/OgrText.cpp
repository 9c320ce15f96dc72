#include "engine/geometry/OgrText.h"

#include <ogr_featurestyle.h>

std::unique_ptr<CElemGeometry> OgrText::fromStyle(const QByteArray &style, const CGeoPoint &anchor)
{
    if (!style.contains("LABEL("))
        return nullptr;
    OGRStyleMgr manager;
    if (!manager.InitStyleString(style.constData()))
        return nullptr;
    for (int part = 0; part < manager.GetPartCount(); ++part) {
        const std::unique_ptr<OGRStyleTool> tool(manager.GetPart(part));
        if (!tool || tool->GetType() != OGRSTCLabel)
            continue;
        auto &label = static_cast<OGRStyleLabel &>(*tool);
        label.SetUnit(OGRSTUGround);
        GBool isDefault = FALSE;
        const char *said = label.TextString(isDefault);
        if (isDefault || !said)
            continue;
        auto text = std::make_unique<CGeoText>(anchor.GetPoint(), QString::fromUtf8(said));
        text->SetAnchor(anchor);
        const double angle = label.Angle(isDefault);
        if (!isDefault)
            text->SetAngle(angle);
        const double height = label.Size(isDefault);
        if (!isDefault && label.GetUnit() == OGRSTUGround)
            text->SetHeight(height);
        return text;
    }
    return nullptr;
}
