#pragma once

#include <QtGlobal>

/// Encodings of a dataset's content.
struct CElemDataEnc
{
    /// The encoding's code, as files and callers know it. Do not change the values.
    enum encType : qint32 {
        NONE = 0,
        SBC = 1,
        SWC = 2,
        STC = 3,
        SDC = 4,
        SFC = 5,
        SPC = 7,
        DCT = 8,
        SGL = 9,
        LZW = 11
    };

    /// True when @p code is one of them.
    static constexpr bool isKnown(qint32 code)
    {
        for (const encType known : {NONE, SBC, SWC, STC, SDC, SFC, SPC, DCT, SGL, LZW})
            if (code == known)
                return true;
        return false;
    }
};
