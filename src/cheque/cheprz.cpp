#include "cheque/cheprz.h"

#include "catalogo/telas.h"
#include "cheque/frente.h"
#include "cheque/main.h"
#include "cheque/parcelas.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "core/teclas.h"
#include "printer/impressao.h"
#include "store/tabelas.h"

#include <optional>
#include <utility>

namespace vexa {

namespace {

const QString Mascara = "#,###,##0.00";
const QString Secao = "FrentePrazo";

bool eh_periodo(int Index) {
    return Index >= 1 && Index <= 12;
}

// A whole number typed in a field of days or of instalments; none when it is no number, has
// decimals or is negative.
std::optional<int> inteiro_digitado(const QString &texto) {
    const auto valor = centavos(texto);
    if (!valor || *valor < 0 || *valor % 100 != 0) return std::nullopt;
    return int(*valor / 100);
}

// The cheque's number after this one: its last digits plus one, in as many digits ("000123"
// gives "000124", "A-099" gives "A-100"). None when it doesn't end in digits.
std::optional<QString> proximo_numero(const QString &numero) {
    int inicio = int(numero.size());
    while (inicio > 0 && numero[inicio - 1] >= u'0' && numero[inicio - 1] <= u'9')
        --inicio;
    if (inicio == numero.size()) return std::nullopt;
    QString digitos = numero.mid(inicio);
    int i = int(digitos.size()) - 1;
    for (; i >= 0 && digitos[i] == u'9'; --i)
        digitos[i] = u'0';
    if (i < 0)
        digitos.prepend(u'1');
    else
        digitos[i] = QChar(digitos[i].unicode() + 1);
    return numero.left(inicio) + digitos;
}

// What each field of an array holds at most; a longer text is cut.
int maximo_text1(int Index) {
    return Index == 0 ? 10 : eh_periodo(Index) ? 3 : 8;
}

const std::vector<RefControle> ordem_text3 = {
    {"Text3", 0}, {"Text3", 1}, {"Text3", 2}, {"Command3D1", 0}};

} // namespace

ChePrz::ChePrz(Sessao &sessao, Desktop &desktop)
    : Tela(telas::ChePrz, "Impressão de Cheques a Prazo", sessao, desktop) {
    LarguraJanela = 620;
    AlturaJanela = 630;
    Text1.mapa().emplace(0, Texto("Valor Total", maximo_text1(0)));
    for (int i = 1; i <= 12; ++i)
        Text1.mapa().emplace(i, Texto("", maximo_text1(i)));
    for (int i = 13; i <= 24; ++i) {
        // The first one's dots are the form's own.
        const QString rotulo = i == 13 ? QStringLiteral("1º Cheque P/..")
                                       : QStringLiteral("%1º Cheque P/.:").arg(i - 12);
        Text1.mapa().emplace(i, Texto(rotulo, maximo_text1(i)));
    }
    for (int i = 0; i < 12; ++i) {
        Text2.mapa().emplace(i, Texto("", 10));
        Text4.mapa().emplace(i, Texto("", 12));
    }
    Text5.Container = &Frame1;

    registra("Text1", Text1);
    registra("DataPre", DataPre);
    registra("prazo", prazo);
    registra("parcelas", parcelas);
    registra("Frame1", Frame1);
    registra("Text5", Text5);
    registra("Text2", Text2);
    registra("Text4", Text4);
    registra("Text3", Text3);
    registra("Label2", Label2);
    registra("Label1", Label1);
    registra("Panel3D1", Panel3D1);
    registra("Command3D1", Command3D1);

    liga("Text1", Evento::Change, [this](int i) { Text1_Change(i); });
    liga("Text1", Evento::Enter, [this](int i) { Text1_Enter(i); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Text2", Evento::Change, [this](int i) { Text2_Change(i); });
    liga("Text2", Evento::GotFocus, [this](int i) { Text2[i].SelecionaTudo = true; });
    liga("Text2", Evento::LostFocus, [this](int i) { Text2_LostFocus(i); });
    ligaTecla("Text2", Evento::KeyDown, [this](int i, int &k, int s) { Text2_KeyDown(i, k, s); });
    liga("Text3", Evento::Change, [this](int i) { Text3_Change(i); });
    liga("Text3", Evento::GotFocus, [this](int i) { Text3_GotFocus(i); });
    liga("Text3", Evento::LostFocus, [this](int i) { Text3_LostFocus(i); });
    ligaTecla("Text3", Evento::KeyDown, [this](int i, int &k, int s) { Text3_KeyDown(i, k, s); });
    liga("Text4", Evento::Change, [this](int i) { Text4_Change(i); });
    liga("Text4", Evento::GotFocus, [this](int i) { Text4[i].SelecionaTudo = true; });
    ligaTecla("Text4", Evento::KeyDown, [this](int i, int &k, int s) { Text4_KeyDown(i, k, s); });
    ligaTecla("DataPre", Evento::KeyDown, [this](int, int &k, int s) { DataPre_KeyDown(k, s); });
    ligaTecla("prazo", Evento::KeyDown, [this](int, int &k, int s) { prazo_KeyDown(k, s); });
    ligaTecla("parcelas", Evento::KeyDown, [this](int, int &k, int s) { parcelas_KeyDown(k, s); });
    ligaTecla("Text5", Evento::KeyDown, [this](int, int &k, int s) { Text5_KeyDown(k, s); });
    liga("Command3D1", Evento::Enter, [this](int i) { semConferir_ = i == 1 || i == 2; });
    liga("Command3D1", Evento::LostFocus, [this](int) { semConferir_ = false; });
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

// --- loading and clearing

void ChePrz::Form_Load() {
    LimpaTela();
    const auto guardado = [this](const QString &chave) {
        return LeGravaIni(sessao.CaminhoIni, Secao, chave, "");
    };
    // The code first: a new code empties the name beside it.
    const std::pair<Texto *, const char *> campos[] = {
        {&Text3[0], "Codigo"}, {&Text3[1], "Cidade"}, {&Text3[2], "Favorecido"}};
    for (const auto &[campo, chave] : campos) {
        const QString v = guardado(chave);
        if (v != "-2") Muda(*campo, v);
    }
    const QString nome = guardado("Banco");
    if (nome != "-2") Label2.Caption = nome;
    // A period stored empty comes back empty: the count skips it where it stands.
    for (int i = 1; i <= 12; ++i) {
        const QString v = guardado(QStringLiteral("prazo%1").arg(i));
        if (v == "-2") break;
        Muda(Text1[i], v);
    }
    SetFocus("Text1", 0);
}

void ChePrz::Form_Activate() {
    const RefControle foco = Foco();
    if (foco.Nome == "Text3") Text3_GotFocus(foco.Index);
}

void ChePrz::LimpaTela() {
    for (auto &[i, t] : Text4)
        Muda(t, QString());
    for (auto &[i, t] : Text1)
        Muda(t, QString());
    for (int i = 1; i <= 4; ++i) {
        const QString v =
            LeGravaIni(sessao.CaminhoIni, "Prazos", QStringLiteral("P%1").arg(i), "").trimmed();
        if (Val(v) > 0) Muda(Text1[i], v);
    }
    for (auto &[i, t] : Text2)
        Muda(t, QString());
    for (auto &[i, t] : Text3)
        Muda(t, QString());
    Label2.Caption.clear();
    for (Texto *t : {&DataPre, &prazo, &parcelas, &Text5})
        Muda(*t, QString());
}

// --- the schedule

int ChePrz::ContaParcelas() const {
    int n = 0;
    for (int i = 1; i <= 12; ++i)
        if (!Text1[i].Text.isEmpty()) ++n;
    return n;
}

void ChePrz::CalculaParcelas() {
    if (Text1[0].Text.isEmpty()) return;
    const int n = ContaParcelas();
    const std::optional<qint64> total = centavos(Text1[0].Text);
    if (n == 0 || !total) return;
    qint64 soma = 0;
    for (int k = 0; k < n; ++k)
        soma += centavos(Text2[k].Text).value_or(0);
    // Amounts that add up were typed or adjusted on purpose, and so were their dates.
    if (soma == *total) return;

    for (int i = 13; i <= 24; ++i)
        Muda(Text1[i], QString());
    for (auto &[i, t] : Text2)
        Muda(t, QString());
    std::optional<QDate> inicio = hoje();
    if (!DataPre.Text.isEmpty()) {
        const auto data = data_digitada(DataPre.Text, sessao.MesAno);
        inicio = data ? le_data(*data) : std::nullopt;
    }
    const QList<qint64> valores = divide_total(*total, n);
    for (int k = 0; k < n; ++k) {
        Muda(Text2[k], formata_centavos(valores[k], Mascara));
        // Each row's date follows its own days, in whatever order they were typed.
        if (inicio) Muda(Text1[k + 13], vencimento(*inicio, int(Val(Text1[k + 1].Text))));
    }
}

void ChePrz::preenche_periodos() {
    for (int i = 1; i <= 24; ++i)
        Muda(Text1[i], QString());
    const std::optional<int> q = inteiro_digitado(parcelas.Text);
    if (!q || *q == 0) {
        aviso("Valor inválido para o número de parcelas");
        Muda(parcelas, QString());
        return;
    }
    if (*q > 12) {
        aviso("O Programa Calcula Somente até 12 Parcelas", Icone::Nenhum);
        Muda(parcelas, QString());
        return;
    }
    // The days of the last instalment must fit the field's three digits: cut, they would read
    // as other days and give other dates.
    const int passo = int(Val(prazo.Text));
    if ((*q - 1) * passo > 999) {
        aviso("O prazo da última parcela passaria de 999 dias");
        Muda(parcelas, QString());
        return;
    }
    // The first cheque falls on the start date.
    Muda(Text1[1], "00");
    for (int i = 2; i <= *q; ++i)
        Muda(Text1[i], QString::number(int(Val(Text1[i - 1].Text)) + passo));
    const int destino = *q == 12 ? 12 : *q + 1;
    SetFocus("Text1", destino);
    enter_periodo(destino);
}

void ChePrz::aplica_dia_fixo() {
    if (Text1[13].Text.size() < 3) {
        aviso("Primeiro calcule a data Normalmente,Preenchendo os campo normalmente\r\n depois "
              "coloque o dia fixo desejado para que as datas sejam alteradas");
        SetFocus(Text5);
        return;
    }
    const std::optional<int> dia = inteiro_digitado(Text5.Text);
    if (!dia || *dia < 1 || *dia > 31) {
        aviso("Dia inválido.");
        Muda(Text5, QString());
        return;
    }
    const QString dd = QStringLiteral("%1").arg(*dia, 2, 10, QLatin1Char('0'));
    for (int i = 13; i <= 24 && Text1[i].Text.size() > 3; ++i)
        Muda(Text1[i], dia_fixo(Text1[i].Text, dd));
}

// --- the fields' events

void ChePrz::aviso(const QString &texto, Icone icone) {
    desktop.MsgBox(texto, Botoes::OK, Caption, icone);
}

void ChePrz::Text1_Change(int Index) {
    const int maximo = maximo_text1(Index);
    corta_tamanho(*this, Text1[Index], maximo + 1, maximo);
}

void ChePrz::Text2_Change(int Index) {
    corta_tamanho(*this, Text2[Index], 11, 10);
}

void ChePrz::Text4_Change(int Index) {
    corta_tamanho(*this, Text4[Index], 13, 12);
}

void ChePrz::Text3_Change(int Index) {
    Texto &campo = Text3[Index];
    // The name beside the bank belongs to the code that was looked up.
    if (Index == 0) Label2.Caption.clear();
    corta_tamanho(*this, campo, campo.MaxLength + 1, campo.MaxLength);
}

void ChePrz::Text1_Enter(int Index) {
    rumoPeriodo_ = eh_periodo(Index);
}

void ChePrz::Text1_GotFocus(int Index) {
    rumoPeriodo_ = false;
    Text1[Index].SelecionaTudo = true;
    if (Index >= 13 && !Text1[1].Text.isEmpty()) CalculaParcelas();
}

bool ChePrz::mostra_valor(Texto &campo, const QString &mascara) {
    const std::optional<qint64> valor = centavos(campo.Text);
    if (valor && *valor >= 0) {
        const QString texto = formata_centavos(*valor, mascara);
        if (texto.size() <= campo.MaxLength) {
            Muda(campo, texto);
            return true;
        }
        // Cut to the field's size it would read as another amount.
        desktop.MsgBox("Tamanho Máximo deste campo...", Botoes::OK, "Erro");
    }
    Muda(campo, QString());
    return false;
}

void ChePrz::Text1_LostFocus(int Index) {
    const bool rumoPeriodo = std::exchange(rumoPeriodo_, false);
    if (std::exchange(semConferir_, false)) return;
    Texto &campo = Text1[Index];
    if (Index == 0) {
        if (!campo.Text.isEmpty() && !mostra_valor(campo, Mascara)) SetFocus(campo);
        return;
    }
    if (eh_periodo(Index)) {
        // Walking the days, an empty one ends them: the dates come next.
        if (campo.Text.isEmpty()) {
            if (rumoPeriodo) SetFocus("Text1", 13);
            return;
        }
        const std::optional<int> dias = inteiro_digitado(campo.Text);
        if (!dias) {
            Muda(campo, QString());
            SetFocus(campo);
            return;
        }
        Muda(campo, Format(QString::number(*dias), "#00"));
        return;
    }
    // A date the rules can't read stays as typed: the fixed day may leave a 29th of February
    // that only the printer refuses.
    if (campo.Text.isEmpty()) return;
    if (const auto data = data_digitada(campo.Text, sessao.MesAno)) Muda(campo, *data);
}

void ChePrz::Text2_LostFocus(int Index) {
    if (std::exchange(semConferir_, false)) return;
    Texto &campo = Text2[Index];
    if (campo.Text.isEmpty()) return;
    if (!mostra_valor(campo, Mascara)) return SetFocus(campo);
    const int n = ContaParcelas();
    if (Index >= n - 1) return;
    // The later instalments share what is left of the total equally, with no correction of
    // the rounding.
    if (Text1[0].Text.isEmpty()) Muda(Text1[0], "0,00");
    qint64 resto = centavos(Text1[0].Text).value_or(0);
    for (int j = 0; j <= Index; ++j)
        resto -= centavos(Text2[j].Text).value_or(0);
    const QString parte = formata_centavos(divide_centavos(resto, n - 1 - Index), Mascara);
    for (int j = Index + 1; j < n; ++j)
        Muda(Text2[j], parte);
}

void ChePrz::Text3_GotFocus(int Index) {
    if (!sessao.ResultadoPesquisa.isEmpty()) {
        Muda(Text3[Index], sessao.ResultadoPesquisa);
        sessao.ResultadoPesquisa.clear();
    }
    Text3[Index].SelecionaTudo = true;
}

void ChePrz::Text3_LostFocus(int Index) {
    if (std::exchange(semConferir_, false)) return;
    Texto &campo = Text3[Index];
    if (Index != 0 || campo.Text.isEmpty()) return;
    Muda(campo, Format(campo.Text, "000"));
    // A register that can't be opened lets the code pass, without a name.
    if (AbreTabelas(sessao, desktop, 1, 0, 0, 0) == -2) return;
    const QString nome = NomeBanco(sessao, campo.Text);
    FechaTabelas(sessao, 1, 0, 0, 0);
    if (nome != "Inexistente") {
        Label2.Caption = nome;
        return;
    }
    desktop.MsgBox("Banco Inexistente...", Botoes::OK, "Erro");
    Muda(campo, QString());
    Label2.Caption.clear();
    SetFocus(campo);
}

// --- keys

bool ChePrz::limpa_campo(Texto &campo, int KeyCode) {
    if (KeyCode != tecla::F8) return false;
    Muda(campo, QString());
    return true;
}

void ChePrz::grava_periodos() {
    // An empty value would read the key instead of storing it.
    for (int i = 1; i <= 12; ++i)
        LeGravaIni(sessao.CaminhoIni, Secao, QStringLiteral("prazo%1").arg(i),
                   Text1[i].Text.isEmpty() ? " " : Text1[i].Text);
}

int ChePrz::limite_parcelas() const {
    return int(Val(parcelas.Text));
}

bool ChePrz::passou_limite(int posicao, const QString &fim) {
    if (parcelas.Text.isEmpty() || posicao <= limite_parcelas()) return false;
    aviso("Ultrapassou o limite de " + QString::number(limite_parcelas()) + fim);
    return true;
}

void ChePrz::Text1_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_campo(Text1[Index], KeyCode)) return;
    if (KeyCode == tecla::F4) {
        if (eh_periodo(Index)) grava_periodos();
        return;
    }
    if (KeyCode == tecla::F3) {
        if (Index >= 1 && Index <= 4)
            aviso("Prazos para pagamento ex: Cheque p/ 30 dias / 60 dias / 90 dias / 120 dias "
                  "(até 4x)",
                  Icone::Informacao);
        else
            aviso("Pesquisa somente para Banco, Cidade e Favorecido!");
        return;
    }
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (Index == 0)
        enter_total();
    else if (eh_periodo(Index))
        enter_periodo(Index);
    else
        enter_vencimento(Index);
}

void ChePrz::enter_total() {
    Texto &campo = Text1[0];
    const std::optional<qint64> valor = centavos(campo.Text);
    if (!valor || *valor < 0) {
        aviso("Valor inválido.");
        Muda(campo, QString());
        return;
    }
    if (mostra_valor(campo, "#,###0.00")) SetFocus(DataPre);
}

void ChePrz::enter_periodo(int Index) {
    if (!Text1[Index].Text.isEmpty() && Index < 12) return SetFocus("Text1", Index + 1);
    for (int j = Index; j < 12; ++j)
        Muda(Text2[j], QString());
    SetFocus("Text1", 13);
}

void ChePrz::enter_vencimento(int Index) {
    if (passou_limite(Index - 12, " parcela(s)")) {
        Muda(Text1[Index], QString());
        return SetFocus("Text3", 0);
    }
    SetFocus(Index == 24 ? RefControle{"Text3", 0} : RefControle{"Text1", Index + 1});
}

void ChePrz::Text2_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_campo(Text2[Index], KeyCode)) return;
    if (KeyCode == tecla::F3) return aviso("Pesquisa somente para Banco, Cidade e Favorecido!");
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (passou_limite(Index + 1, " parcela")) {
        Muda(Text2[Index], QString());
        return SetFocus("Text3", 0);
    }
    SetFocus(Index == 3 || Index == 11 ? RefControle{"Text3", 0} : RefControle{"Text2", Index + 1});
}

void ChePrz::Text4_KeyDown(int Index, int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (passou_limite(Index + 1, " parcela")) {
        Muda(Text4[Index], QString());
        return SetFocus("Text3", 0);
    }
    if (Text4[Index].Text.isEmpty()) return aviso("Digite o número do cheque");
    // Typed by hand, the days may stand without a number of instalments.
    const int ate = qMin(12, parcelas.Text.isEmpty() ? ContaParcelas() : limite_parcelas());
    for (int j = Index + 1; j < ate; ++j) {
        const std::optional<QString> numero = proximo_numero(Text4[j - 1].Text);
        if (!numero) break;
        Muda(Text4[j], *numero);
    }
    SetFocus("Text3", 0);
}

void ChePrz::Text3_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_campo(Text3[Index], KeyCode)) return;
    if (KeyCode == tecla::F4) {
        const QString texto = Text3[Index].Text.isEmpty() ? " " : Text3[Index].Text;
        if (Index == 0) {
            LeGravaIni(sessao.CaminhoIni, Secao, "Codigo", texto);
            LeGravaIni(sessao.CaminhoIni, Secao, "banco",
                       Label2.Caption.isEmpty() ? " " : Label2.Caption);
        } else {
            LeGravaIni(sessao.CaminhoIni, Secao, Index == 1 ? "Cidade" : "Favorecido", texto);
        }
        return;
    }
    if (KeyCode == tecla::F3) {
        static const qint16 tipos[] = {2, 1, 0}; // banks, cities, payees
        sessao.TipoPesquisa = tipos[Index];
        abre_tela(sessao, desktop, telas::Pesquisa);
        return;
    }
    enter_avanca(*this, {"Text3", Index}, KeyCode, ordem_text3);
}

void ChePrz::DataPre_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (DataPre.Text.isEmpty()) Muda(DataPre, hoje().toString("dd/MM/yy"));
    const QString texto = DataPre.Text;
    if (texto.size() != 6 && texto.size() != 8) {
        aviso("Por favor, digite a data no formato 'DD/MM/AA'");
        Muda(DataPre, QString());
        return;
    }
    if (texto.size() == 6 && !texto.contains(u'/')) Muda(DataPre, Format(texto, "@@/@@/@@"));
    const std::optional<QString> data = data_digitada(DataPre.Text, sessao.MesAno);
    if (!data)
        return aviso("Data inválida. Verifique se a data foi digitada no formato 'DD/MM/AA'");
    Muda(DataPre, *data);
    SetFocus(prazo);
}

void ChePrz::prazo_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (!inteiro_digitado(prazo.Text)) {
        aviso("Valor inválido para a quantidade de dias.");
        Muda(prazo, QString());
        return;
    }
    SetFocus(parcelas);
}

void ChePrz::parcelas_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    preenche_periodos();
}

void ChePrz::Text5_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    aplica_dia_fixo();
}

// --- printing

int ChePrz::VerificaCampos() {
    const auto recusa = [this](const QString &texto) {
        desktop.MsgBox(texto, Botoes::OK, "Erro", Icone::Exclamacao);
        return 1;
    };
    if (ContaParcelas() == 0) return recusa("Valores inválidos...");
    if (Text3[0].Text.isEmpty()) return recusa("Código do banco inválido...");
    if (Text1[13].Text.isEmpty() || Text2[0].Text.isEmpty()) return recusa("Valores inválidos...");
    // The printer takes no empty city or payee: the blank stands on the screen and in Log.
    for (int i : {1, 2})
        if (Text3[i].Text.isEmpty()) Muda(Text3[i], " ");
    return 0;
}

void ChePrz::ImprimeParcelas() {
    const int n = ContaParcelas();
    // The entry screen's report box decides, as for a single cheque.
    const auto registra = [this] {
        const auto *principal = dynamic_cast<const Main *>(desktop.Aberta(telas::Main));
        return principal && principal->CheckBox.Value != 0;
    };
    for (int i = 0; i < n; ++i) {
        if (!pede_documento(desktop, "Impressão do Cheque")) return;
        const QString valor = Text2[i].Text.trimmed();
        // The amount goes again as the sixth text, which only an instalment fills.
        const TextosCheque textos{Text3[0].Text.trimmed(), valor, Text3[2].Text, Text3[1].Text,
                                  Text1[i + 13].Text,      valor};
        // A port that didn't open ends the run; a refused cheque, whatever its code, doesn't.
        QString nota;
        const std::optional<qint16> resultado =
            imprime_um_cheque(sessao, desktop, sessao.Gauge1, textos, true, &nota);
        if (!resultado) return;
        if (*resultado == 1 && registra()) RegistraParcela(i, nota);
    }
}

int ChePrz::RegistraParcela(int Parcela, const QString &Nota) {
    ChequeImpresso cheque{Text3[0].Text, Text2[Parcela].Text,      Text3[2].Text,
                          Text3[1].Text, Text1[Parcela + 13].Text, Text4[Parcela].Text};
    cheque.Parcela = true;
    cheque.Nota = Nota;
    return registra_cheque(sessao, desktop, cheque) == -2 ? -2 : 0;
}

void ChePrz::Command3D1_Click(int Index) {
    semConferir_ = false;
    switch (Index) {
    case 0:
        if (VerificaCampos() != 1) ImprimeParcelas();
        break;
    case 1:
        Unload();
        break;
    case 2:
        LimpaTela();
        SetFocus("Text1", 0);
        break;
    default:
        break;
    }
}

} // namespace vexa
