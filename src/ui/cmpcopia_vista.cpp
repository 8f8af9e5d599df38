// The copy of the cheque: the layout's choice on top, the page in a fixed-pitch box that
// doesn't wrap (its lines are the page's lines), the target and the two print options
// beside it, the warnings under the page, the commands below.
#include "copy/cmpcopia.h"
#include "ui/binder.h"
#include "ui/partes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaCmpCopia(Tela &tela, QMainWindow &janela) {
    auto &modelo = static_cast<CmpCopia &>(tela);
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central, 8);

    auto *topo = new QHBoxLayout;
    auto *rotulo = cria<QLabel>(central, "Label1");
    topo->addWidget(rotulo);
    auto *layouts = cria<QComboBox>(central, "Combo1");
    layouts->setMinimumWidth(260);
    topo->addWidget(layouts);
    topo->addStretch(1);
    v->addLayout(topo);

    auto *meio = new QHBoxLayout;
    auto *pagina = cria<QPlainTextEdit>(central, "CopiaTxt");
    QFont fixa("Courier New");
    fixa.setStyleHint(QFont::TypeWriter);
    fixa.setPointSize(10);
    pagina->setFont(fixa);
    pagina->setLineWrapMode(QPlainTextEdit::NoWrap);
    // Room for the 80 columns of a printed line and a little more.
    pagina->setMinimumWidth(QFontMetrics(fixa).horizontalAdvance(QString(84, u'0')) + 30);
    pagina->setMinimumHeight(QFontMetrics(fixa).lineSpacing() * 22 + 12);
    meio->addWidget(pagina, 1);

    auto *lado = new QVBoxLayout;
    auto *envio = cria<QGroupBox>(central, "Frame1");
    auto *ve = new QVBoxLayout(envio);
    for (int i : {1, 2, 0})
        ve->addWidget(cria<QRadioButton>(envio, nome_controle("OpEnvio", i)));
    auto *arquivo = cria<QLabel>(envio, "NomeArq");
    arquivo->setIndent(22);
    ve->addWidget(arquivo);
    lado->addWidget(envio);
    lado->addWidget(cria<QCheckBox>(central, "CheckImpMai"));
    lado->addWidget(cria<QCheckBox>(central, "CheckImpInv"));
    lado->addStretch(1);
    meio->addLayout(lado);
    v->addLayout(meio, 1);

    auto *info = cria<QLabel>(central, "Info");
    info->setStyleSheet("color: #b00000;");
    v->addWidget(info);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    comandos->addWidget(cria_botao(central, nome_controle("BtnCmd", 0)));
    comandos->addWidget(cria_botao(central, nome_controle("BtnCmd", 1)));
    v->addLayout(comandos);

    // The cursor's place goes to the model after the key or the click that moved it, once the
    // text the binder mirrors has settled.
    QPointer<QPlainTextEdit> vivo(pagina);
    QObject::connect(
        pagina, &QPlainTextEdit::cursorPositionChanged, pagina,
        [vivo, &modelo] {
            if (!vivo || modelo.Descarregada()) return;
            const int posicao = vivo->textCursor().position();
            Binder::Despacha([&modelo, posicao] { modelo.CopiaTxt_Cursor(posicao); });
        },
        Qt::QueuedConnection);

    tela.LarguraJanela = 980;
    tela.AlturaJanela = 560;
}

} // namespace vexa::ui
