// The widget tests drive real windows on the offscreen platform.
#include "ui/aplicacao.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    vexa::ui::PreparaAplicacao(app);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
