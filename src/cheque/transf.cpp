#include "cheque/transf.h"

#include "cheque/frente.h"

#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "core/teclas.h"
#include "printer/impressao.h"
#include "printer/vexa32.h"
#include "registers/banctrans.h"

#include <algorithm>
#include <cmath>

namespace vexa {

namespace {

// The widest a line of the words may reach on the face, in characters.
constexpr int FimLinha = 96;
// A line of the copy on a plain sheet.
constexpr int LinhaCopia = 80;

// The adjust grid's 120 columns span the printer's line of 96 characters.
double coluna_impressa(double ColunaGrade) {
    return ColunaGrade * 8 / 10;
}

// Columns and widths come in fractions of a character; a blank is a whole one.
int inteiro(double valor) {
    return int(std::lround(valor));
}

// Blanks until the text reaches the column (none when it is already past it).
void ate_coluna(QString &T, double coluna) {
    const int n = inteiro(coluna);
    if (T.size() < n) T += QString(n - T.size(), u' ');
}

// A code typed short ("1") is the layout's key in three digits ("001").
QString codigo_banco(const QString &texto) {
    const QString codigo = texto.trimmed();
    bool numero = false;
    const int n = codigo.toInt(&numero);
    return numero && n >= 0 ? Format(QString::number(n), "000") : codigo;
}

// The amount in words as the printer left them: without blanks around and without the zero
// character that ends them.
QString palavras(const QString &extenso) {
    QString t = extenso;
    while (!t.isEmpty() && (t.back() == u'\0' || t.back().isSpace()))
        t.chop(1);
    return t.trimmed();
}

} // namespace

QPair<QString, QString> divide_extenso_transf(const QString &Extenso, int Largura1, int Largura2) {
    QString texto = Extenso;
    const int total = Largura1 + Largura2;
    if (texto.size() < total) texto += QString(total - texto.size(), u'*');
    if (texto.size() > Largura1)
        return {texto.left(qMax(0, Largura1)), texto.mid(qMax(0, Largura1))};
    return {texto, QString()};
}

QString monta_bloco_transf(const QStringList &Posicoes, const FaceTransf &Face) {
    const auto n = [&](int i) { return Val(Posicoes.value(i)); };
    const int L1 = int(n(0)), L2 = int(n(1)), L3 = int(n(2)), L4 = int(n(3)), L6 = int(n(5));
    // Every column is one of the adjust grid's, so the face prints where the adjust shows it.
    const double C1 = coluna_impressa(n(7)), C2 = coluna_impressa(n(8)), C3 = coluna_impressa(n(9)),
                 C4 = coluna_impressa(n(10)), C5 = coluna_impressa(n(11)),
                 C6 = coluna_impressa(n(12)), C7 = coluna_impressa(n(13));
    const auto [linha1, linha2] =
        divide_extenso_transf(Face.Extenso, inteiro(FimLinha - C2), inteiro(FimLinha - C3));

    struct Item {
        double Coluna;
        QString Texto;
    };
    const auto poe = [](QString &T, std::vector<Item> itens) {
        std::stable_sort(itens.begin(), itens.end(),
                         [](const Item &a, const Item &b) { return a.Coluna < b.Coluna; });
        for (const Item &i : itens) {
            ate_coluna(T, i.Coluna);
            T += i.Texto;
        }
    };

    QString bloco;
    for (int linha = 1; linha <= 21; ++linha) {
        QString T;
        if (L1 == linha) {
            ate_coluna(T, C1);
            T += "(" + Face.Valor + ")";
        }
        if (L2 == linha) {
            ate_coluna(T, C2);
            T += linha1;
        }
        if (L3 == linha) {
            ate_coluna(T, C3);
            T += linha2;
        }
        if (L4 == linha && L6 == linha)
            poe(T, {{C4, Face.Cidade}, {C5, Face.Data}, {C6, Face.Agencia}, {C7, Face.Conta}});
        else if (L6 == linha)
            poe(T, {{C6, Face.Agencia}, {C7, Face.Conta}});
        else if (L4 == linha)
            poe(T, {{C4, Face.Cidade}, {C5, Face.Data}});
        bloco += T + "\n";
    }
    bloco += "\r\n\x1b@";
    return bloco.toUpper();
}

ChequeTransf::ChequeTransf(Sessao &sessao, Desktop &desktop)
    : Tela(telas::ChequeTransf, "Impressão de Cheque Transferência", sessao, desktop) {
    registra("Frame1", Frame1);
    liga_campo("txtBanco", txtBanco, "Banco", &txtValor);
    liga_campo("txtValor", txtValor, "Valor", &txtAgencia);
    liga_campo("txtAgencia", txtAgencia, "Agencia", &txtConta);
    liga_campo("txtConta", txtConta, "Conta", &txtCidade);
    liga_campo("txtCidade", txtCidade, "Cidade", &txtData);
    liga_campo("txtData", txtData, QString(), &txtNumeroCheque);
    liga_campo("txtNumeroCheque", txtNumeroCheque, "NumeroCheque", &txtComentario);
    liga_campo("txtComentario", txtComentario, "Comentario", nullptr);
    registra("TxtCpo", TxtCpo);
    liga("TxtCpo", Evento::GotFocus, [this](int i) { DestacaTexto(TxtCpo[i]); });
    ligaTecla("TxtCpo", Evento::KeyDown, [this](int i, int &k, int) {
        if (GravaCampos(k, QStringLiteral("Campo0%1").arg(i), TxtCpo[i], "FrenteInfo")) return;
        if (k == tecla::Enter && TxtCpo.contains(i + 1)) SetFocus(TxtCpo[i + 1]);
    });
    registra("Panel3D1", Panel3D1);
    registra("Panel3D2", Panel3D2);
    registra("Opcoes", Opcoes);
    liga("Opcoes", Evento::Click, [this](int i) { Opcoes_Click(i); });
    liga("txtBanco", Evento::LostFocus, [this](int) { txtBanco_LostFocus(); });
    liga("txtValor", Evento::LostFocus, [this](int) { txtValor_LostFocus(); });
}

void ChequeTransf::liga_campo(const QString &nome, Texto &campo, const QString &chave,
                              Texto *proximo) {
    registra(nome, campo);
    liga(nome, Evento::GotFocus, [this, &campo](int) { DestacaTexto(campo); });
    ligaTecla(nome, Evento::KeyDown, [this, &campo, chave, proximo](int, int &k, int) {
        if (GravaCampos(k, chave, campo)) return;
        if (k == tecla::Enter && proximo) SetFocus(*proximo);
    });
}

void ChequeTransf::Form_Load() {
    CarregaInfoTransf();
}

bool ChequeTransf::VerificaData(const QString &Data) const {
    return DataValida(Data.mid(0, 2) + Data.mid(3, 2) + Data.mid(6, 4));
}

void ChequeTransf::DestacaTexto(Texto &Objeto) {
    Objeto.SelecionaTudo = true;
}

bool ChequeTransf::GravaCampos(int KeyCode, const QString &label, Texto &Objeto,
                               const QString &secao) {
    if (KeyCode == tecla::F8) {
        Muda(Objeto, QString());
        if (!label.isEmpty()) LeGravaIni(sessao.CaminhoIni, secao, label, " ");
        return true;
    }
    if (KeyCode != tecla::F4) return false;
    // An empty value would read the key instead of storing it.
    if (!label.isEmpty())
        LeGravaIni(sessao.CaminhoIni, secao, label, Objeto.Text.isEmpty() ? " " : Objeto.Text);
    return true;
}

void ChequeTransf::CarregaInfoTransf() {
    const std::pair<Texto *, const char *> campos[] = {
        {&txtBanco, "Banco"},          {&txtValor, "Valor"},   {&txtAgencia, "Agencia"},
        {&txtConta, "Conta"},          {&txtCidade, "Cidade"}, {&txtNumeroCheque, "NumeroCheque"},
        {&txtComentario, "Comentario"}};
    for (const auto &[campo, chave] : campos) {
        const QString v = LeGravaIni(sessao.CaminhoIni, "InfoTransf", chave, "");
        if (v != "-2") campo->Text = v;
    }
    // A bank stored with F4 whose layout has been excluded since is left out: Imprimir asks for
    // a bank instead.
    const QString banco = codigo_banco(txtBanco.Text);
    txtBanco.Text = le_layout_transf(sessao, banco) ? banco : QString();
    for (int i = 0; i < 3; ++i) {
        const QString v =
            LeGravaIni(sessao.CaminhoIni, "FrenteInfo", QStringLiteral("Campo0%1").arg(i), "");
        if (v != "-2") TxtCpo[i].Text = v;
    }
    txtData.Text = hoje().toString("dd/MM/yyyy");
}

void ChequeTransf::txtBanco_LostFocus() {
    if (txtBanco.Text.trimmed().isEmpty()) return;
    Muda(txtBanco, codigo_banco(txtBanco.Text));
    if (!le_layout_transf(sessao, txtBanco.Text)) banco_sem_layout();
}

void ChequeTransf::banco_sem_layout() {
    desktop.MsgBox("Banco não cadastrado.", Botoes::OK, Caption, Icone::Exclamacao);
    Muda(txtBanco, QString());
}

void ChequeTransf::txtValor_LostFocus() {
    if (txtValor.Text.isEmpty()) return;
    const auto valor = centavos(txtValor.Text);
    Muda(txtValor, valor ? formata_centavos(*valor, "###,##0.00") : QString());
}

void ChequeTransf::recusa(const QString &texto, Texto &campo) {
    desktop.MsgBox(texto, Botoes::OK, Caption, Icone::Exclamacao);
    SetFocus(campo);
}

bool ChequeTransf::ValidaTransf() {
    if (txtBanco.Text.isEmpty())
        return recusa("O campo 'Banco' não pode ser vazio.", txtBanco), false;
    if (txtValor.Text.isEmpty())
        return recusa("O campo 'Valor' não pode ser vazio.", txtValor), false;
    if (centavos(txtValor.Text).value_or(0) == 0)
        return recusa("O campo 'Valor' deve ser maior que zero.", txtValor), false;
    if (txtAgencia.Text.isEmpty())
        return recusa("O campo 'Nº/Nome Agência' não pode ser vazio.", txtAgencia), false;
    if (txtConta.Text.isEmpty())
        return recusa("O campo 'Nº Conta' não pode ser vazio.", txtConta), false;
    if (txtCidade.Text.isEmpty())
        return recusa("O campo 'Cidade' não pode ser vazio.", txtCidade), false;
    if (!VerificaData(txtData.Text)) return recusa("Data inválida.", txtData), false;
    return true;
}

void ChequeTransf::ImprimeTransf() {
    const QString banco = txtBanco.Text.trimmed();
    // The layout may have been excluded since the bank was typed: nothing goes to the printer.
    const auto layout = le_layout_transf(sessao, banco);
    if (!layout) return banco_sem_layout();
    if (!sessao.Impressora || !pede_documento(desktop, Caption)) return;
    const auto cents = centavos(txtValor.Text.trimmed());
    FaceTransf face;
    face.Valor = cents ? formata_centavos(*cents, "###,##0.00") : txtValor.Text.trimmed();
    face.Conta = txtConta.Text.trimmed();
    face.Data = txtData.Text.trimmed();
    face.Agencia = txtAgencia.Text.trimmed();
    face.Cidade = txtCidade.Text.trimmed();
    MontaExtenso(sessao, desktop, face.Valor);
    face.Extenso = palavras(sessao.ValorExtenso);
    // Composed in capitals first, then turned into the printer's characters once: an accent
    // keeps its capital on paper.
    const QString bloco = ConverteTexto(monta_bloco_transf(layout->Posicoes, face));

    Vexa32 &imp = *sessao.Impressora;
    imp.IniciaPorta(sessao.PortaImpressora);
    imp.TravaDoc(1);
    qint16 ultimo = 0;
    if (Copia) {
        // On the plain sheet the branch and the account stand apart from what comes before
        // them by a tenth of their column: the line keeps within the sheet's 80 characters.
        const auto distancia = [&](int i) { return inteiro(Val(layout->Posicoes.value(i)) / 10); };
        QString extenso = face.Extenso;
        const int linhas = qMax(1, int((extenso.size() + LinhaCopia - 1) / LinhaCopia));
        extenso += QString(linhas * LinhaCopia - extenso.size(), u'*');
        const QString copia = "\n\n\n" + banco + " - " + layout->Nome + "\n" + "Nº " +
                              txtNumeroCheque.Text.trimmed() + " " + face.Valor + "\n\n\n\n" +
                              extenso + "\n\n\n\n" + QString(24, u' ') + face.Cidade + " " +
                              face.Data + QString(distancia(12), u' ') + face.Agencia +
                              QString(distancia(13), u' ') + face.Conta + "\n\n\n" +
                              txtComentario.Text;
        imp.FormataTX(ConverteTexto("          CÓPIA DE CHEQUE TRANSFERÊNCIA") + "\r\n", 2, 0, 0, 1,
                      0);
        ultimo = imp.FormataTX(ConverteTexto(copia.toUpper()) + "\r\n", 2, 0, 0, 0, 0);
        imp.TravaDoc(0);
    } else {
        ultimo = imp.FormataTX(bloco, 2, 0, 0, 0, 0);
        imp.TravaDoc(0);
        // The back is asked for only when the face went out.
        if (ultimo == 1 && !txtComentario.Text.isEmpty() &&
            desktop.MsgBox("Posicione o cheque para a impressão do verso.", Botoes::OKCancel,
                           Caption, Icone::Informacao) != Resposta::Cancel) {
            imp.TravaDoc(1);
            ultimo = imp.FormataTX(ConverteTexto(txtComentario.Text) + "\r\n", 2, 0, 0, 0, 0);
            imp.TravaDoc(0);
        }
    }
    imp.FechaPorta();
    if (ultimo != 1)
        desktop.MsgBox("Problemas com a impressao do cheque", Botoes::OK,
                       "Impressão do Cheque (" + Format(QString::number(ultimo), "000") + ")",
                       Icone::Exclamacao);
}

void ChequeTransf::Opcoes_Click(int Index) {
    if (Index == 1) return Unload();
    if (Index != 0 && Index != 2) return;
    if (!ValidaTransf()) return;
    // A copy takes no leaf of the book; a cheque whose number is already registered is asked
    // about.
    if (Index == 0 && !confere_duplicado(sessao, desktop, txtBanco.Text, txtNumeroCheque.Text))
        return SetFocus(txtNumeroCheque);
    Copia = Index == 2;
    ImprimeTransf();
    Copia = false;
    SetFocus(txtBanco);
}

} // namespace vexa
