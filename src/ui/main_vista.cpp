// The entry screen's widgets: the front of the cheque as a cheque reads, the back and the
// extra fields apart below it, the commands in a column at the right, the key hint at the
// bottom.
#include "ui/partes.h"

#include <QCheckBox>
#include <QFont>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {

QLabel *rotulo(QWidget *pai, const QString &objeto, QLineEdit *par = nullptr) {
    auto *l = cria<QLabel>(pai, objeto);
    if (par) l->setBuddy(par);
    return l;
}

// A width that holds n characters of the field's font.
int largura_de(const QWidget *w, int caracteres) {
    return w->fontMetrics().horizontalAdvance(QString(caracteres, u'0')) + 16;
}

void cria_menus(QMainWindow &janela) {
    auto *barra = janela.menuBar();
    const auto menu = [&](QWidget *pai, const QString &objeto) {
        auto *m = new QMenu(pai);
        m->menuAction()->setObjectName(objeto);
        if (auto *sup = qobject_cast<QMenu *>(pai))
            sup->addMenu(m);
        else
            barra->addMenu(m);
        return m;
    };
    const auto item = [](QMenu *m, const QString &objeto) {
        m->addAction(QString())->setObjectName(objeto);
    };
    QMenu *arquivo = menu(barra, "Arquivo");
    item(arquivo, "Conf_Vexa");
    item(arquivo, "MOpSoft");
    item(arquivo, "Importa");
    arquivo->addSeparator();
    item(arquivo, "CopiaAgora");
    item(arquivo, "RestauraCopia");
    arquivo->addSeparator();
    item(arquivo, "Sair");
    QMenu *cadastro = menu(barra, "Cadastro");
    QMenu *bancos = menu(cadastro, "Bank");
    item(bancos, "subChequeNormal");
    item(bancos, "subChequeTransferencia");
    item(cadastro, "Favor");
    item(cadastro, "Cidad");
    item(cadastro, "CpoX");
    item(cadastro, "Layout");
    QMenu *impressao = menu(barra, "Impressao");
    for (const char *i : {"Imp_Cheque", "Imp_ChequeTransf", "ch_pr", "CopiaCheque", "Verso"})
        item(impressao, i);
    impressao->addSeparator();
    item(impressao, "Relat");
    QMenu *ajuda = menu(barra, "Ajuda");
    item(ajuda, "Topicos");
    item(ajuda, "Sobre_T");
}

// The front, laid out as the cheque reads: bank and its name, number; amount; payee; city
// and date.
QGroupBox *cria_frente(QWidget *pai, QList<QWidget *> &ordem) {
    auto *quadro = cria<QGroupBox>(pai, "Frame1");
    auto *g = new QGridLayout(quadro);
    g->setHorizontalSpacing(10);
    g->setVerticalSpacing(8);

    auto *banco = cria_campo(quadro, nome_controle("Text1", 0));
    banco->setFixedWidth(largura_de(banco, 4));
    auto *valor = cria_campo(quadro, nome_controle("Text1", 1));
    valor->setFixedWidth(largura_de(valor, 17));
    valor->setAlignment(Qt::AlignRight);
    auto *favorecido = cria_campo(quadro, nome_controle("Text1", 2));
    favorecido->setPlaceholderText("Favorecido");
    auto *cidade = cria_campo(quadro, nome_controle("Text1", 3));
    auto *data = cria_campo(quadro, nome_controle("Text1", 4));
    data->setFixedWidth(largura_de(data, 9));
    auto *numero = cria_campo(quadro, nome_controle("Text1", 6));
    numero->setFixedWidth(largura_de(numero, 13));

    auto *nomeBanco = rotulo(quadro, nome_controle("Label1", 6));
    nomeBanco->setMinimumWidth(220);

    auto *linha1 = new QHBoxLayout;
    linha1->addWidget(banco);
    linha1->addWidget(nomeBanco, 1);
    g->addWidget(rotulo(quadro, nome_controle("Label1", 0), banco), 0, 0);
    g->addLayout(linha1, 0, 1);
    g->addWidget(rotulo(quadro, nome_controle("Label1", 5), numero), 0, 2, Qt::AlignRight);
    g->addWidget(numero, 0, 3);

    g->addWidget(rotulo(quadro, nome_controle("Label1", 1), valor), 1, 0);
    g->addWidget(valor, 1, 1, Qt::AlignLeft);

    g->addWidget(favorecido, 2, 0, 1, 4);

    auto *linha4 = new QHBoxLayout;
    linha4->addWidget(cidade, 1);
    linha4->addSpacing(16);
    linha4->addWidget(rotulo(quadro, nome_controle("Label1", 4), data));
    linha4->addSpacing(4);
    linha4->addWidget(data);
    linha4->addWidget(rotulo(quadro, "Label2"));
    g->addWidget(rotulo(quadro, nome_controle("Label1", 3), cidade), 3, 0);
    g->addLayout(linha4, 3, 1, 1, 3);

    auto *relatorio = cria<QCheckBox>(quadro, "CheckBox");
    g->addWidget(relatorio, 4, 1, 1, 3);
    g->setColumnStretch(1, 1);

    ordem << banco << valor << favorecido << cidade << data << numero << relatorio;
    return quadro;
}

QGroupBox *cria_verso(QWidget *pai, QList<QWidget *> &ordem) {
    auto *quadro = cria<QGroupBox>(pai, "Frame3");
    auto *g = new QGridLayout(quadro);
    g->setVerticalSpacing(4);
    // Two columns of five lines: the three comment lines open the first.
    for (int i = 0; i < 10; ++i) {
        auto *linha = cria_campo(quadro, nome_controle("Text2", i));
        const int col = (i / 5) * 2, lin = i % 5;
        g->addWidget(rotulo(quadro, nome_controle("Label1", i + 7), linha), lin, col);
        g->addWidget(linha, lin, col + 1);
        ordem << linha;
    }
    g->setColumnStretch(1, 1);
    g->setColumnStretch(3, 1);
    return quadro;
}

QGroupBox *cria_extras(QWidget *pai, QList<QWidget *> &ordem) {
    auto *quadro = cria<QGroupBox>(pai, "Frame4");
    auto *h = new QHBoxLayout(quadro);
    for (int i = 0; i < 3; ++i) {
        auto *texto = cria_campo(quadro, nome_controle("TxtCpo", i));
        h->addWidget(rotulo(quadro, nome_controle("Label4", i), texto));
        h->addWidget(texto, 1);
        ordem << texto;
    }
    return quadro;
}

QWidget *cria_comandos(QWidget *pai, QList<QWidget *> &ordem) {
    auto *coluna = new QWidget(pai);
    auto *v = new QVBoxLayout(coluna);
    v->setContentsMargins(0, 0, 0, 0);
    v->setSpacing(6);
    // A spoiled leaf is declared right under the print that spoiled it.
    for (int i : {0, 8, 1, 2, 3, 4, 5, 6, 7}) {
        auto *b = cria<QPushButton>(coluna, nome_controle("Opcoes", i));
        // Enter on a focused command presses it, as the road of the cheque expects.
        b->setAutoDefault(true);
        b->setMinimumHeight(30);
        v->addWidget(b);
        ordem << b;
        if (i == 1 || i == 4) v->addSpacing(8);
    }
    v->addSpacing(8);
    auto *formato = cria<QGroupBox>(coluna, "Frame2");
    auto *f = new QVBoxLayout(formato);
    for (const char *o : {"Option1", "Option2", "Option3"}) {
        auto *r = cria<QRadioButton>(formato, o);
        f->addWidget(r);
        ordem << r;
    }
    v->addWidget(formato);
    v->addStretch(1);
    auto *imagem = cria<QLabel>(coluna, "Image1");
    imagem->setAlignment(Qt::AlignCenter);
    imagem->setMaximumSize(200, 90);
    imagem->setScaledContents(false);
    v->addWidget(imagem);
    return coluna;
}

// The key hint keeps the width its first hint asks for: a longer hint (an extra field's) is
// cut with an ellipsis where the panel ends, instead of widening the window for good.
class DicaTeclas : public QLabel {
  public:
    explicit DicaTeclas(QWidget *pai) : QLabel(pai) {}
    QSize minimumSizeHint() const override {
        if (!base_.isValid() && !text().isEmpty()) base_ = QLabel::minimumSizeHint();
        return base_.isValid() ? base_ : QLabel::minimumSizeHint();
    }
    QSize sizeHint() const override { return minimumSizeHint(); }

  protected:
    void paintEvent(QPaintEvent *) override {
        QPainter p(this);
        drawFrame(&p);
        const QRect r = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
        p.setPen(palette().color(QPalette::WindowText));
        p.drawText(r, int(alignment()),
                   fontMetrics().elidedText(text(), Qt::ElideRight, r.width()));
    }

  private:
    mutable QSize base_;
};

QWidget *cria_rodape(QWidget *pai) {
    auto *rodape = new QWidget(pai);
    auto *h = new QHBoxLayout(rodape);
    h->setContentsMargins(0, 0, 0, 0);
    auto *dica = new DicaTeclas(rodape);
    dica->setObjectName("Panel3D2");
    dica->setFrameShape(QFrame::StyledPanel);
    dica->setFrameShadow(QFrame::Sunken);
    dica->setMargin(4);
    h->addWidget(dica, 1);
    // What became of the last print, beside the hint; without a frame, so that it shows nothing
    // before the first print.
    auto *situacao = cria<QLabel>(rodape, "Situacao");
    situacao->setMargin(4);
    h->addWidget(situacao, 1);
    auto *impressora = cria<QLabel>(rodape, "RotuloImpressora");
    impressora->setFrameShape(QFrame::StyledPanel);
    impressora->setFrameShadow(QFrame::Sunken);
    impressora->setMargin(4);
    h->addWidget(impressora);
    h->addWidget(cria<QLabel>(rodape, "Label3"));
    auto *gauge = cria<QProgressBar>(rodape, "Gauge1");
    gauge->setRange(0, 100);
    gauge->setValue(0);
    gauge->setTextVisible(false);
    gauge->setFixedSize(140, 14);
    h->addWidget(gauge);
    return rodape;
}

} // namespace

void CriaVistaMain(Tela &, QMainWindow &janela) {
    cria_menus(janela);
    auto *central = new QWidget(&janela);
    auto *grade = new QGridLayout(central);
    grade->setContentsMargins(10, 8, 10, 8);
    grade->setHorizontalSpacing(12);
    grade->setVerticalSpacing(8);

    QList<QWidget *> ordem, comandos;
    grade->addWidget(cria_frente(central, ordem), 0, 0);
    grade->addWidget(cria_verso(central, ordem), 1, 0);
    grade->addWidget(cria_extras(central, ordem), 2, 0);
    grade->addWidget(cria_comandos(central, comandos), 0, 1, 3, 1);
    grade->addWidget(cria_rodape(central), 3, 0, 1, 2);
    grade->setColumnStretch(0, 1);
    grade->setRowStretch(1, 1);
    janela.setCentralWidget(central);

    ordem << comandos;
    for (int i = 1; i < ordem.size(); ++i)
        QWidget::setTabOrder(ordem[i - 1], ordem[i]);
}

} // namespace vexa::ui
