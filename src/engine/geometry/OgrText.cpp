#include "engine/geometry/OgrText.h"

#include <ogr_featurestyle.h>

namespace {

/// The size of @p label in map units; 0 for a size on paper, which unlike one on the ground grows with the scale.
double groundSize(OGRStyleLabel &label)
{
    GBool isDefault = FALSE;
    label.SetUnit(OGRSTUGround, 1.0);
    const double size = label.Size(isDefault);
    label.SetUnit(OGRSTUGround, 2.0);
    return isDefault || size != label.Size(isDefault) ? 0.0 : size;
}

} // namespace

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
        GBool isDefault = FALSE;
        const char *said = label.TextString(isDefault);
        if (isDefault || !said)
            continue;
        auto text = std::make_unique<CGeoText>(anchor.GetPoint(), QString::fromUtf8(said));
        text->SetAnchor(anchor);
        const double angle = label.Angle(isDefault);
        if (!isDefault)
            text->SetAngle(angle);
        text->SetHeight(groundSize(label));
        return text;
    }
    return nullptr;
}
