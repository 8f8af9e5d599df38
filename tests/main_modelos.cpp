// The model tests run under a GUI application without a screen: the printer simulator paints
// the PDF of each cheque face, and that needs fonts.
#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
