// The graphic adjusts: the form drawn as the model's grid (120 columns by 22 lines for a
// cheque), with the sample boxes where the model puts them; below, each field's line and column.
#include "registers/ajusta.h"
#include "ui/binder.h"
#include "ui/cadastro_vista.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {

// Pixels for the screen's units: the whole form, 22 lines of 188, fits in about 440 pixels.
constexpr double Escala = 0.1;

int px(int unidades) {
    return int(unidades * Escala + 0.5);
}

QFont fonte_amostra() {
    QFont f("Courier New");
    f.setStyleHint(QFont::TypeWriter);
    f.setPixelSize(11);
    return f;
}

// One sample box: the model's text in a frame; the focused one stands out.
class CaixaAmostra : public QWidget {
  public:
    CaixaAmostra(const Forma &forma, QWidget *pai) : QWidget(pai), forma_(forma) {
        setFocusPolicy(Qt::StrongFocus);
        setFont(fonte_amostra());
    }
    void posiciona() { setGeometry(px(forma_.Left), px(forma_.Top), px(forma_.Width), px(188)); }

  protected:
    void paintEvent(QPaintEvent *) override {
        QPainter p(this);
        const QRect r = rect().adjusted(0, 0, -1, -1);
        p.fillRect(r, hasFocus() ? QColor(255, 243, 176) : QColor(255, 255, 255, 210));
        p.setPen(hasFocus() ? QColor(200, 80, 0) : QColor(90, 110, 140));
        p.drawRect(r);
        p.setPen(Qt::black);
        p.drawText(r.adjusted(2, 0, -1, 0), Qt::AlignVCenter | Qt::AlignLeft, forma_.Caption);
    }

  private:
    const Forma &forma_;
};

// The form: paper, the line grid, a tick every ten columns.
class FormaCheque : public QFrame {
  public:
    FormaCheque(QWidget *pai, int colunas, int linhas)
        : QFrame(pai), Colunas(colunas), Linhas(linhas) {
        const int largura = px(AjusteGrafico::Origem * 2 + Colunas * AjusteGrafico::UnidadeColuna);
        const int altura = px(AjusteGrafico::Origem * 2 + Linhas * AjusteGrafico::UnidadeLinha);
        setFixedSize(largura, altura);
    }

  protected:
    void paintEvent(QPaintEvent *) override {
        QPainter p(this);
        p.fillRect(rect(), QColor(232, 244, 236));
        const int x0 = px(AjusteGrafico::Origem), y0 = px(AjusteGrafico::Origem);
        const int x1 = px(AjusteGrafico::Origem + Colunas * AjusteGrafico::UnidadeColuna);
        const int y1 = px(AjusteGrafico::Origem + Linhas * AjusteGrafico::UnidadeLinha);
        QFont pequena = font();
        pequena.setPixelSize(8);
        p.setFont(pequena);
        for (int l = 0; l <= Linhas; ++l) {
            const int y = px(AjusteGrafico::Origem + l * AjusteGrafico::UnidadeLinha);
            p.setPen(QColor(200, 222, 208));
            p.drawLine(x0, y, x1, y);
            // Every fifth line numbered in the margin, beside the middle of its row.
            if (l < Linhas && (l + 1) % 5 == 0) {
                p.setPen(QColor(110, 140, 120));
                p.drawText(0, y, x0 - 1, px(AjusteGrafico::UnidadeLinha),
                           Qt::AlignRight | Qt::AlignVCenter, QString::number(l + 1));
            }
        }
        for (int c = 0; c <= Colunas; c += 10) {
            const int x = px(AjusteGrafico::Origem + c * AjusteGrafico::UnidadeColuna);
            p.setPen(QColor(170, 200, 180));
            p.drawLine(x, y0, x, y1);
            p.setPen(QColor(110, 140, 120));
            if (c > 0) p.drawText(x - 10, 1, 20, y0 - 1, Qt::AlignCenter, QString::number(c));
        }
        p.setPen(QColor(120, 150, 130));
        p.drawRect(x0, y0, x1 - x0, y1 - y0);
    }

  private:
    const int Colunas, Linhas;
};

QLabel *rotulo_numero(QWidget *pai, int i) {
    auto *l = new QLabel(pai);
    l->setObjectName(nome_controle("Label2", i));
    l->setAlignment(Qt::AlignCenter);
    l->setMinimumWidth(44);
    l->setFrameShape(QFrame::StyledPanel);
    return l;
}

} // namespace

void CriaVistaAjusta(Tela &tela, QMainWindow &janela) {
    auto &modelo = static_cast<AjusteGrafico &>(tela);
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central, 8);

    auto *topo = new QHBoxLayout;
    for (const char *nome : {"Panel3D3", "Label3"}) {
        auto *l = new QLabel(central);
        l->setObjectName(nome);
        l->setFrameShape(QFrame::Panel);
        l->setFrameShadow(QFrame::Sunken);
        l->setMargin(3);
        topo->addWidget(l, QString(nome) == "Panel3D3" ? 1 : 0);
    }
    v->addLayout(topo);

    auto *forma = new FormaCheque(central, modelo.Colunas, modelo.Linhas);
    QList<CaixaAmostra *> caixas;
    for (auto &[i, caixa] : modelo.Text1) {
        auto *c = new CaixaAmostra(caixa, forma);
        c->setObjectName(nome_controle("Text1", i));
        caixas.append(c);
    }
    v->addWidget(forma, 0, Qt::AlignHCenter);

    // Each field's caption, its line and its column; a line label shared with an earlier box
    // (the date parts share the city's line) stands once.
    auto *numeros = new QGridLayout;
    QSet<int> postos;
    numeros->setHorizontalSpacing(10);
    const int caixasN = modelo.Text1.size();
    const int porColuna = (caixasN + 1) / 2;
    for (int i = 0; i < caixasN; ++i) {
        const int linha = i % porColuna + 1, coluna = i / porColuna * 4;
        auto *legendaCaixa = new QLabel(modelo.Label1[i].Caption, central);
        legendaCaixa->setObjectName(nome_controle("Label1", i));
        numeros->addWidget(legendaCaixa, linha, coluna);
        const int rotuloLinha = modelo.rotulo_linha(i);
        if (!postos.contains(rotuloLinha)) {
            postos.insert(rotuloLinha);
            numeros->addWidget(rotulo_numero(central, rotuloLinha), linha, coluna + 1);
        }
        numeros->addWidget(rotulo_numero(central, modelo.rotulo_coluna(i)), linha, coluna + 2);
    }
    for (int c : {0, 4}) {
        numeros->addWidget(new QLabel("Linha", central), 0, c + 1, Qt::AlignCenter);
        numeros->addWidget(new QLabel("Coluna", central), 0, c + 2, Qt::AlignCenter);
    }
    numeros->setColumnMinimumWidth(3, 30);
    numeros->setColumnStretch(7, 1);
    v->addLayout(numeros);

    auto *baixo = new QHBoxLayout;
    auto *dica = new QLabel(central);
    dica->setObjectName("Panel3D5");
    dica->setFrameShape(QFrame::Panel);
    dica->setFrameShadow(QFrame::Sunken);
    dica->setMargin(3);
    baixo->addWidget(dica, 1);
    for (int i = 0; i < 2; ++i)
        baixo->addWidget(cria_botao(central, nome_controle("Command3D1", i)));
    v->addLayout(baixo);

    // The boxes follow the model after every handler.
    QPointer<QWidget> vivo(central);
    auto pinta = [caixas, vivo] {
        if (!vivo) return;
        for (CaixaAmostra *c : caixas) {
            c->posiciona();
            c->update();
        }
    };
    pinta();
    Binder::PintaAoEspelhar(janela, pinta);
}

} // namespace vexa::ui
