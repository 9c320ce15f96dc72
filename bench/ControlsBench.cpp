// What a keystroke costs in the edits for angles and numbers, beside one in a plain edit, which is Qt's own share. The
// edits are shown, so that each change is laid out and an update asked for; nothing is painted.

#include "controls/DegreeMask.h"
#include "controls/NumberInput.h"
#include "controls/TdDMSMakEdit.h"
#include "controls/TdNumEdit.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <benchmark/benchmark.h>

namespace {

void press(QWidget &edit, Qt::Key key, const QString &text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&edit, &event);
}

/// Types digits over and over into an edit that starts as @p prepare leaves it; one iteration is one key.
template<class Edit, class Prepare>
void typeDigits(benchmark::State &state, Prepare prepare)
{
    Edit edit;
    prepare(edit);
    edit.show();
    int typed = 0;
    for (auto _ : state) {
        if (typed++ % 9 == 0) {
            edit.setCursorPosition(0);
            edit.setSelection(0, 0);
        }
        press(edit, Qt::Key_7, QStringLiteral("7"));
        if (edit.text().size() > 15) {
            state.PauseTiming();
            prepare(edit);
            state.ResumeTiming();
        }
    }
}

void BM_KeyInPlainEdit(benchmark::State &state)
{
    typeDigits<QLineEdit>(state, [](QLineEdit &edit) { edit.setText(QStringLiteral("1")); });
}
BENCHMARK(BM_KeyInPlainEdit)->Unit(benchmark::kMicrosecond);

void BM_KeyInPlainEditThatSetsItsTextAnew(benchmark::State &state)
{
    typeDigits<QLineEdit>(state, [](QLineEdit &edit) {
        edit.disconnect();
        edit.setText(QStringLiteral("____:__:__.____"));
        QObject::connect(&edit, &QLineEdit::textEdited, &edit, [&edit] {
            const int caret = edit.cursorPosition();
            edit.setText(QStringLiteral("____:__:__.____"));
            edit.setCursorPosition(caret % 15);
        });
    });
}
BENCHMARK(BM_KeyInPlainEditThatSetsItsTextAnew)->Unit(benchmark::kMicrosecond);

void BM_KeyInAngleEdit(benchmark::State &state)
{
    typeDigits<CTdDMSMakEdit>(state, [](CTdDMSMakEdit &edit) { edit.SetMask(QStringLiteral("####:##:##.####")); });
}
BENCHMARK(BM_KeyInAngleEdit)->Unit(benchmark::kMicrosecond);

void BM_KeyInNumberEdit(benchmark::State &state)
{
    typeDigits<CTdNumEdit>(state, [](CTdNumEdit &edit) {
        edit.SetRange(-1e30, 1e30);
        edit.SetValue(qint32(1));
    });
}
BENCHMARK(BM_KeyInNumberEdit)->Unit(benchmark::kMicrosecond);

void BM_MaskOfAngles(benchmark::State &state)
{
    DegreeMask mask;
    mask.setMask(QStringLiteral("####:##:##.####"), u'_');
    int caret = 0;
    for (auto _ : state) {
        QString typed = mask.text();
        typed.insert(caret, caret % 2 == 0 ? u'7' : u'8');
        benchmark::DoNotOptimize(mask.edited(typed, caret + 1, DegreeMask::Key::Other));
        caret = (caret + 1) % 14;
    }
}
BENCHMARK(BM_MaskOfAngles)->Unit(benchmark::kMicrosecond);

void BM_AcceptanceOfNumbers(benchmark::State &state)
{
    const QString text = QStringLiteral("-123456.789");
    for (auto _ : state)
        benchmark::DoNotOptimize(NumberInput::accepts(NumberInput::Real, text, text.size(), u'e'));
}
BENCHMARK(BM_AcceptanceOfNumbers)->Unit(benchmark::kMicrosecond);

} // namespace
