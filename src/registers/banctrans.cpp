#include "registers/banctrans.h"

#include "catalogo/telas.h"

#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "registers/ajustatransf.h"
#include "store/tabelas.h"

#include <QFile>

namespace vexa {

namespace {

const QString Secao = QStringLiteral("ChequeTransf");
const QString TituloInclusao = QStringLiteral("Inclusão de Bancos");
const QString TituloAlteracao = QStringLiteral("Alteração de Bancos");
const QString TituloExclusao = QStringLiteral("Exclusão de Bancos");

// The fields of table Transferencia by the index of Text1.
const QStringList &campos_tabela() {
    static const QStringList c = {"Codigo", "Nome", "L1", "L2", "L3", "L4", "L5", "L6",
                                  "L7",     "C1",   "C2", "C3", "C4", "C5", "C6", "C7"};
    return c;
}

// Each field's line and its column carry the same caption.
Matriz<Texto> campos_transf() {
    static const QStringList legendas = {
        "Valor Numérico:", "Valor Extenso 1:", "Valor Extenso 2:", "Cidade:",
        "Data:",           "Agência:",         "Nº Conta:"};
    Matriz<Texto> campos;
    campos.mapa().emplace(0, Texto("Codigo:", 3));
    campos.mapa().emplace(1, Texto("Nome:", 30));
    for (int i = 0; i < 14; ++i)
        campos.mapa().emplace(i + 2, Texto(legendas[i % 7], 3));
    return campos;
}

// The code at the head of a line of the list: "001 - Banco" gives "001".
QString codigo_da_linha(const QString &linha) {
    return linha.trimmed().left(3);
}

bool so_digitos(const QString &texto) {
    for (const QChar c : texto)
        if (!c.isDigit()) return false;
    return !texto.isEmpty();
}

} // namespace

std::optional<LayoutTransf> le_layout_transf(const Sessao &s, const QString &Codigo) {
    if (Codigo.trimmed().isEmpty()) return std::nullopt;
    const QString v = LeGravaIni(s.CaminhoIni, Secao, Codigo.trimmed(), "");
    if (v == "-2" || v.trimmed().isEmpty()) return std::nullopt;
    LayoutTransf layout;
    for (int k = 0; k < 14; ++k)
        layout.Posicoes.append(v.mid(4 * k, 3));
    layout.Nome = v.mid(61);
    return layout;
}

QString arquivo_lista_transf(const Sessao &s) {
    return s.CaminhoApp + "/ChequeTransf.txt";
}

BancTrans::BancTrans(Sessao &sessao, Desktop &desktop)
    : Cadastro(telas::BancTrans, "Cadastro de Bancos para Cheque Transferência", sessao, desktop,
               TabTransferencia, campos_transf(), "Pesquisar por:") {
    registra_cadastro("SSCommand1", SSCommand1);
    registra("Command3D2", Command3D2);
    liga("Command3D2", Evento::Click, [this](int) { Command3D2_Click(); });
}

void BancTrans::Form_Load() {
    HabilitaBotoes(true, false, false, true);
    LimpaCampos();
    const QStringList linhas = acerta_arquivo();
    // The register works from the section and the file: a table that can't be opened (another
    // program holds the database) is left for the next opening, without a word. An empty code
    // opens the whole table.
    ExisteCodigo(sessao, QString(), TabTransferencia);
    tabela_ = sessao.Banco && sessao.Banco->Aberta();
    if (tabela_) acerta_tabela(linhas);
    GeraListaCheqTransf();
}

QStringList BancTrans::acerta_arquivo() {
    const QStringList antes = linhas_arquivo();
    QStringList linhas, codigos;
    for (const QString &linha : antes) {
        const QString codigo = codigo_da_linha(linha);
        if (codigos.contains(codigo)) continue;
        const auto layout = le_layout_transf(sessao, codigo);
        if (!layout) continue;
        codigos.append(codigo);
        linhas.append(codigo + " - " + layout->Nome);
    }
    // A layout whose line never reached the file (the program stopped between the two
    // writes, or the file refused its line) is in force all the same: it is listed again.
    for (const QString &codigo : ChavesIni(sessao.CaminhoIni, Secao)) {
        if (codigos.contains(codigo)) continue;
        if (const auto layout = le_layout_transf(sessao, codigo)) {
            codigos.append(codigo);
            linhas.append(codigo + " - " + layout->Nome);
        }
    }
    if (linhas != antes) regrava_arquivo(linhas);
    return linhas;
}

void BancTrans::acerta_tabela(const QStringList &linhas) {
    // Quiet: a refused write ends the catching up, and the next opening tries again.
    for (const QString &linha : linhas) {
        const QString codigo = codigo_da_linha(linha);
        const auto layout = le_layout_transf(sessao, codigo);
        if (!grava_tabela(QStringList{codigo, layout->Nome} + layout->Posicoes)) return;
    }
    // An empty code selects the whole table.
    ExisteCodigo(sessao, QString(), TabTransferencia);
    RecordSet &rs = conjunto();
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
        if (!le_layout_transf(sessao, rs.Campo("Codigo")) && !rs.Delete()) return;
}

void BancTrans::Form_Unload() {
    fecha_tabela(sessao, TabTransferencia);
}

QStringList BancTrans::linhas_arquivo() const {
    QFile f(arquivo_lista_transf(sessao));
    if (!f.open(QIODevice::ReadOnly)) return {};
    QStringList linhas;
    for (QString linha : de_ansi(f.readAll()).split('\n')) {
        if (linha.endsWith('\r')) linha.chop(1);
        if (!linha.trimmed().isEmpty()) linhas.append(linha);
    }
    return linhas;
}

bool BancTrans::regrava_arquivo(const QStringList &linhas) {
    QString texto;
    for (const QString &l : linhas)
        texto += l + "\r\n";
    return grava_inteiro(arquivo_lista_transf(sessao), para_ansi(texto));
}

QString BancTrans::GeraListaCheqTransf() {
    List1.Clear();
    const QString filtro = Text2.Text.trimmed();
    const bool porCodigo = so_digitos(filtro);
    const QString chave = chave_texto(filtro);
    for (const QString &linha : linhas_arquivo()) {
        QString item = linha;
        while (item.startsWith(' '))
            item.remove(0, 1);
        if (!filtro.isEmpty()) {
            const qsizetype traco = item.indexOf(" - ");
            const QString nome = traco < 0 ? QString() : item.mid(traco + 3);
            if (porCodigo ? !item.startsWith(filtro) : !chave_texto(nome).startsWith(chave))
                continue;
        }
        List1.AddItem(item);
    }
    return {};
}

void BancTrans::procura(const QString &) {
    GeraListaCheqTransf();
}

int BancTrans::VerificaCamposVazios() {
    for (auto &[i, campo] : Text1) {
        if (!campo.Text.isEmpty()) continue;
        desktop.MsgBox("Nenhum campo pode ser vazio.", Botoes::OK, TituloInclusao,
                       Icone::Exclamacao);
        SetFocus(campo);
        return 0;
    }
    return 1;
}

int BancTrans::VerificaBancoTransf(int Modo) {
    if (!VerificaCamposVazios()) return 1;
    const QString codigo = Text1[0].Text;
    // A layout from a settings file that came without its table counts as registered too.
    const bool existe = (tabela_ && ExisteCodigo(sessao, codigo, TabTransferencia) != 0) ||
                        ExisteBancoTransf(codigo) != 0;
    if (existe && Modo == 1) {
        desktop.MsgBox("Banco já cadastrado.", Botoes::OK, TituloInclusao, Icone::Exclamacao);
        return 1;
    }
    if (!existe && Modo == 0) {
        desktop.MsgBox("Banco não encontrado.", Botoes::OK, TituloAlteracao, Icone::Exclamacao);
        return 1;
    }
    return 0;
}

int BancTrans::ExisteBancoTransf(const QString &Codigo) {
    return le_layout_transf(sessao, Codigo) ? 1 : 0;
}

void BancTrans::CarregaBancoTransf(const QString &Codigo) {
    const auto layout = le_layout_transf(sessao, Codigo);
    Text1[0].Text = Codigo;
    Text1[1].Text = layout ? layout->Nome : QString();
    for (int k = 0; k < 14; ++k)
        Text1[k + 2].Text = layout ? layout->Posicoes[k] : QString();
}

QStringList BancTrans::Posicoes() const {
    QStringList p;
    for (int i = 2; i <= 15; ++i)
        p.append(Text1[i].Text);
    return p;
}

bool BancTrans::AtualizaIniTransf(int Modo) {
    if (Modo != 0 && Modo != 1) return false;
    const QString linha = linha_transf(Posicoes(), Text1[1].Text);
    if (LeGravaIni(sessao.CaminhoIni, Secao, Text1[0].Text, linha) == "1") return true;
    if (Modo == 0)
        desktop.MsgBox("Problemas na inclusão do banco no arquivo VEXA.INI", Botoes::OK,
                       TituloInclusao, Icone::Exclamacao);
    else
        desktop.MsgBox("Problemas na alteracao do arquivo VEXA.INI", Botoes::OK, TituloAlteracao,
                       Icone::Exclamacao);
    return false;
}

bool BancTrans::AcrescentaListaTransf() {
    return acrescenta_inteiro(arquivo_lista_transf(sessao),
                              para_ansi(Text1[0].Text + " - " + Text1[1].Text + "\r\n"));
}

void BancTrans::avisa_lista_nao_gravada(const QString &titulo) {
    // The layout is in force all the same; the list shows the file as it was.
    desktop.MsgBox("A lista de bancos não foi gravada no arquivo ChequeTransf.txt.", Botoes::OK,
                   titulo, Icone::Exclamacao);
}

bool BancTrans::grava_tabela(const QStringList &campos) {
    RecordSet &rs = conjunto();
    const bool existe = ExisteCodigo(sessao, campos.value(0), TabTransferencia) != 0;
    if (existe) {
        rs.MoveFirst();
        QStringList atuais;
        for (const QString &c : campos_tabela())
            atuais.append(rs.Campo(c));
        if (atuais == campos) return true;
        rs.Edit();
    } else {
        rs.AddNew();
    }
    for (int i = 0; i < campos_tabela().size(); ++i)
        rs.Define(campos_tabela()[i], campos.value(i));
    if (rs.Update()) return true;
    rs.CancelUpdate();
    return false;
}

bool BancTrans::apaga_tabela(const QString &Codigo) {
    // The code is the table's key: one row at most.
    if (!ExisteCodigo(sessao, Codigo, TabTransferencia)) return true;
    RecordSet &rs = conjunto();
    rs.MoveFirst();
    return rs.Delete();
}

void BancTrans::grava_tabela_da_tela() {
    QStringList campos;
    for (const auto &[i, campo] : Text1)
        campos.append(campo.Text);
    if (tabela_ && !grava_tabela(campos)) avisa_registro_nao_gravado(desktop);
}

void BancTrans::inclui() {
    // The list and the table follow the section: a layout that isn't in force isn't listed.
    if (!AtualizaIniTransf(0)) return;
    if (!AcrescentaListaTransf()) avisa_lista_nao_gravada(TituloInclusao);
    grava_tabela_da_tela();
}

void BancTrans::altera() {
    if (!AtualizaIniTransf(1)) return;
    grava_tabela_da_tela();
    // The bank's line takes the new name, where it stood.
    const QString codigo = Text1[0].Text;
    const QString nova = codigo + " - " + Text1[1].Text;
    QStringList linhas = linhas_arquivo();
    bool achou = false;
    for (QString &l : linhas) {
        if (codigo_da_linha(l) != codigo) continue;
        if (achou) {
            l.clear();
            continue;
        }
        l = nova;
        achou = true;
    }
    linhas.removeAll(QString());
    if (!achou) linhas.append(nova);
    if (!regrava_arquivo(linhas)) avisa_lista_nao_gravada(TituloAlteracao);
}

void BancTrans::exclui() {
    const QString codigo = Text1[0].Text;
    if (LeGravaIni(sessao.CaminhoIni, Secao, codigo, "*%*") != "1") {
        desktop.MsgBox("Problemas na exclusão do banco no arquivo VEXA.INI", Botoes::OK,
                       TituloExclusao, Icone::Exclamacao);
        return;
    }
    QStringList linhas = linhas_arquivo();
    linhas.removeIf([&](const QString &l) { return codigo_da_linha(l) == codigo; });
    if (!regrava_arquivo(linhas)) avisa_lista_nao_gravada(TituloExclusao);
    if (tabela_ && !apaga_tabela(codigo)) avisa_registro_nao_gravado(desktop, true);
}

void BancTrans::grava(int Index) {
    if (Index == 2) {
        if (VerificaBancoTransf(0)) return;
    } else if (!VerificaCamposVazios()) {
        return;
    }
    if (Index == 0) {
        if (TemSelecao()) return LimpaCampos();
        HabilitaBotoes(true, false, false, true);
        if (ExisteBancoTransf(Text1[0].Text)) {
            desktop.MsgBox("Banco já cadastrado.", Botoes::OK, TituloInclusao, Icone::Exclamacao);
            return;
        }
        inclui();
    } else {
        if (!TemSelecao())
            desktop.MsgBox("Selecione um banco...", Botoes::OK,
                           Index == 1 ? TituloAlteracao : TituloExclusao, Icone::Exclamacao);
        else if (Index == 1)
            altera();
        else
            exclui();
        HabilitaBotoes(true, false, false, true);
    }
    GeraListaCheqTransf();
    LimpaCampos();
}

void BancTrans::PreparaAjusteTransf() {
    prepara_posicoes(2, posicoes_padrao_transf(), 7);
}

void BancTrans::Command3D2_Click() {
    if (Text1[0].Text.isEmpty() || Text1[1].Text.isEmpty()) return;
    PreparaAjusteTransf();
    abre_tela(sessao, desktop, telas::AjustaChequeTransferencia);
}

PedidoLista BancTrans::pedido_lista() const {
    return {"Bancos", 2, " Bancos Cadastrados", "Não existe banco cadastrado para ser impresso.",
            "Impressão"};
}

} // namespace vexa
