// The widget tests drive real windows on the offscreen platform.
#include "printer/papel.h"
#include "printer/pdf_face.h"
#include "ui/aplicacao.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    vexa::ui::prepara_aplicacao(app);
    vexa::define_pintor_pdf(vexa::pdf_face);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
