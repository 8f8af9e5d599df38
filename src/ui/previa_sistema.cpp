#include "ui/previa_sistema.h"

#include "printer/pinta_sistema.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {

// The sheet at true size: the screen's physical dots per millimetre.
class FolhaPrevia : public QWidget {
  public:
    FolhaPrevia(const PaginaSistema &pagina, QWidget *pai) : QWidget(pai), pagina_(pagina) {
        const QScreen *tela = QGuiApplication::primaryScreen();
        pxPorMm_ = (tela ? tela->physicalDotsPerInchX() : 96.0) / 25.4;
        setFixedSize(int(pagina.Largura * pxPorMm_) + 1, int(pagina.Altura * pxPorMm_) + 1);
    }

  protected:
    void paintEvent(QPaintEvent *) override {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        pinta_pagina(p, pagina_, pxPorMm_, true);
    }

  private:
    PaginaSistema pagina_;
    double pxPorMm_ = 96.0 / 25.4;
};

} // namespace

bool previa_cheque_sistema(const PaginaSistema &face) {
    QDialog janela;
    janela.setWindowTitle("Prévia do Cheque");
    auto *v = new QVBoxLayout(&janela);
    v->addWidget(new QLabel("O cheque em tamanho real, como vai sair na impressora do sistema. "
                            "A faixa cinza é a faixa magnética.",
                            &janela));
    v->addWidget(new FolhaPrevia(face, &janela), 0, Qt::AlignHCenter);
    auto *botoes = new QDialogButtonBox(&janela);
    botoes->addButton("&Imprimir", QDialogButtonBox::AcceptRole)->setDefault(true);
    botoes->addButton("&Cancelar", QDialogButtonBox::RejectRole);
    QObject::connect(botoes, &QDialogButtonBox::accepted, &janela, &QDialog::accept);
    QObject::connect(botoes, &QDialogButtonBox::rejected, &janela, &QDialog::reject);
    v->addWidget(botoes);
    return janela.exec() == QDialog::Accepted;
}

} // namespace vexa::ui
