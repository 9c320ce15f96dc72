#include <QApplication>
#include <QFont>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

/// Runs the tests of one folder in an application that looks the same everywhere.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QLoggingCategory::setFilterRules(QStringLiteral("default=false"));
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));

    // The comma run proves something only when the process really has a decimal comma.
    const char *wanted = std::getenv("TD_TEST_LOCALE");
    if (wanted && std::strstr(wanted, "de_DE") && std::strcmp(std::localeconv()->decimal_point, ",") != 0) {
        std::fputs("the locale de_DE.UTF-8 is not installed: run tools/setup.sh\n", stderr);
        return 1;
    }
    return RUN_ALL_TESTS();
}
