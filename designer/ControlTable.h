#pragma once

#include <span>

class QWidget;

/// One control as Designer offers it.
struct ControlRow
{
    const char *className;
    const char *header; ///< as a form includes it
    const char *icon;   ///< name of the picture in :/designer/
    const char *toolTip;
    const char *objectName; ///< of the first one in a form
    const char *properties; ///< what a new one starts with, in the language of forms
    QWidget *(*make)(QWidget *parent);
};

/// Every control of the library that can stand in a form.
std::span<const ControlRow> controlTable();
