#include "ui/progresso_qt.h"

#include <QApplication>
#include <QProgressDialog>

namespace vexa::ui {

ProgressoQt::~ProgressoQt() {
    Termina();
}

void ProgressoQt::Inicia(const QString &titulo, const QString &texto, qint64 maximo,
                         bool cancelavel) {
    Termina();
    maximo_ = qMax<qint64>(1, maximo);
    dialogo_ = new QProgressDialog(texto, cancelavel ? QStringLiteral("&Cancelar") : QString(), 0,
                                   1000, QApplication::activeWindow());
    dialogo_->setWindowTitle(titulo);
    dialogo_->setWindowModality(Qt::ApplicationModal);
    // Work that ends within the second shows no dialog at all.
    dialogo_->setMinimumDuration(800);
    dialogo_->setAutoClose(false);
    dialogo_->setAutoReset(false);
    dialogo_->setValue(0);
}

bool ProgressoQt::Passo(qint64 valor) {
    if (!dialogo_) return true;
    dialogo_->setValue(int(qBound<qint64>(0, valor * 1000 / maximo_, qint64(1000))));
    QApplication::processEvents();
    return !dialogo_->wasCanceled();
}

void ProgressoQt::Termina() {
    if (dialogo_) delete dialogo_.data();
}

} // namespace vexa::ui
