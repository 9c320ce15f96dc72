#pragma once

/// The state in which the processor's vector registers are left.
namespace TxVectorState {

#if defined(__x86_64__) && defined(__GNUC__)
__attribute__((target("avx"))) inline void clearOnAvx()
{
    __builtin_ia32_vzeroupper();
}
#endif

/// Marks the upper halves of the vector registers as unused.
///
/// Qt's hash of a text uses wide registers on newer x86 processors and leaves them in use, and from then on every plain
/// floating-point or copying instruction waits for the halves it does not need: walks through GDAL were seen to take
/// 1.6 times as long. To be called before long work in other libraries; it costs a few cycles. Does nothing on
/// processors that have no such registers.
inline void clearUpperHalves()
{
#if defined(__x86_64__) && defined(__GNUC__)
    if (__builtin_cpu_supports("avx"))
        clearOnAvx();
#endif
}

} // namespace TxVectorState
