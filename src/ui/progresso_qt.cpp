// The folder dialog and the progress window of a long task, on Qt Widgets.
#include "ui/desktop_qt.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QProgressDialog>
#include <QPushButton>

namespace vexa::ui {

namespace {

QWidget *janela_ativa() {
    QWidget *ativa = QApplication::activeWindow();
    return ativa && ativa->isVisible() ? ativa : nullptr;
}

class ProgressoQt : public Progresso {
  public:
    explicit ProgressoQt(const QString &titulo) : dialogo_(janela_ativa()) {
        dialogo_.setWindowTitle(titulo);
        dialogo_.setWindowModality(Qt::ApplicationModal);
        dialogo_.setCancelButton(new QPushButton("Cancelar"));
        dialogo_.setMinimumDuration(0);
        dialogo_.setMinimumWidth(420);
        dialogo_.setAutoClose(false);
        dialogo_.setAutoReset(false);
        dialogo_.setRange(0, 0);
        dialogo_.show();
        relogio_.start();
        QApplication::processEvents();
    }

    void Etapa(const QString &texto, int maximo) override {
        dialogo_.setLabelText(texto);
        dialogo_.setRange(0, std::max(0, maximo));
        dialogo_.setValue(0);
        QApplication::processEvents();
    }

    void Valor(int valor) override {
        // A task reports often; the window is painted and the events run a few times a
        // second, which is all the operator sees and keeps Cancelar answering.
        if (relogio_.elapsed() < 50) return;
        relogio_.restart();
        dialogo_.setValue(std::min(valor, dialogo_.maximum()));
        QApplication::processEvents();
    }

    bool Cancelado() const override { return dialogo_.wasCanceled(); }

  private:
    QProgressDialog dialogo_;
    QElapsedTimer relogio_;
};

} // namespace

QString DesktopQt::EscolhePasta(const QString &titulo) {
    return QFileDialog::getExistingDirectory(janela_ativa(), titulo);
}

std::unique_ptr<Progresso> DesktopQt::AbreProgresso(const QString &titulo) {
    return std::make_unique<ProgressoQt>(titulo);
}

} // namespace vexa::ui
