// The model tests run under a GUI application without a screen: the printer simulator paints
// the PDF of each cheque face, and that needs fonts.
#include "printer/papel.h"
#include "printer/pdf_face.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    vexa::define_pintor_pdf(vexa::pdf_face);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
