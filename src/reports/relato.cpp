#include "reports/relato.h"
#include "reports/andamento.h"

#include "catalogo/telas.h"
#include "cheque/main.h"
#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/relogio.h"
#include "printer/sistema.h"
#include "registers/cadastro.h"
#include "reports/arquivo_relatorio.h"
#include "reports/filtro.h"
#include "reports/geral.h"
#include "reports/historico.h"
#include "reports/listas.h"
#include "reports/planilha.h"
#include "store/consulta_log.h"
#include "store/tabelas.h"

#include <QStringBuilder>
#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace vexa {

namespace {

QString campo(const QMap<QString, QString> &registro, const QString &nome) {
    const auto i = registro.constFind(nome);
    if (i != registro.constEnd()) return i.value();
    for (auto j = registro.constBegin(); j != registro.constEnd(); ++j)
        if (j.key().compare(nome, Qt::CaseInsensitive) == 0) return j.value();
    return {};
}

// A text mask over a field, or blanks of the mask's width when the field is empty.
QString em_colunas(const QString &texto, const QString &mascara, int largura) {
    return texto.isEmpty() ? QString(largura, u' ') : Format(texto, mascara);
}

} // namespace

QString LinhaRelatorio(const QMap<QString, QString> &registro) {
    static const QString favorecido = "!" + QString(74, u'@');
    QString linha =
        campo(registro, "StCancel") == "C" ? QStringLiteral("C |") : QStringLiteral("  |");
    linha += em_colunas(campo(registro, "NRCH"), "@@@@@@@@@@@@", 12);
    linha += " | ";
    linha += campo(registro, "Banco");
    linha += " | ";
    linha += Format(mascara_valor(campo(registro, "V_CH"), "#,###,###,##0.00"), "@@@@@@@@@@@@@@@@");
    linha += " | ";
    linha += em_colunas(campo(registro, "Data"), "!@@@@@@@@", 8);
    linha += " | ";
    linha += em_colunas(campo(registro, "Favor"), favorecido, 74);
    linha += em_colunas(campo(registro, "Index"), "@@@@@@@@@@", 10);
    return linha;
}

QString CabecalhoRelatorio() {
    return u"St|" % QStringLiteral("Nº Cheque").rightJustified(12) % u" | Bco | " %
           QStringLiteral("Valor").rightJustified(16) % u" | " %
           QStringLiteral("Data").leftJustified(8) % u" | " %
           QStringLiteral("Favorecido").leftJustified(74) %
           QStringLiteral("Registro").rightJustified(10);
}

QString descreve_cheque(const QString &banco, const QString &numero, const QString &valor,
                        const QString &favorecido, const QString &data) {
    return u"Banco: " % banco.trimmed() % u"\nNúmero: " % numero.trimmed() % u"\nValor: " %
           valor.trimmed() % u"\nFavorecido: " % favorecido.trimmed() % u"\nData: " %
           data.trimmed();
}

QString descreve_linha(const QString &linha) {
    return descreve_cheque(linha.mid(18, 3), linha.mid(3, 12), linha.mid(24, 16), linha.mid(54, 74),
                           linha.mid(43, 8));
}

void avisa_registro_ilegivel(Sessao &s, Desktop &d) {
    d.MsgBox("Não foi possível ler o registro de cheques: o banco de dados \"" + s.CaminhoApp +
                 "/" + s.NomeMDB +
                 "\" está bloqueado por outro programa.\nFeche o outro "
                 "programa e tente de novo.",
             Botoes::OK, "Erro", Icone::Exclamacao);
}

Relato::Relato(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Relato, "Relatório de Cheques Transmitidos", sessao, desktop) {
    OpCmd[0].Value = 1;
    OpCmd[1].Value = 1;
    OpCmd[1].Container = OpCmd01[1].Container = &FrameFormato;
    OpCmd[0].Container = OpCmd01[0].Container = OpCmd02[0].Container = &FrameEnvio;
    Label3.Container = Label4.Container = criar.Container = &FrameGeral;
    Exportar[0].Container = Exportar[1].Container = &FrameGeral;
    List1.MultiSelect = true;
    registra("List1", List1);
    registra("Label2", Label2);
    registra("Text1", Text1);
    registra("Label1", Label1);
    registra("SSCommand1", SSCommand1);
    registra("SSCommand2", SSCommand2);
    registra("SSCommand3", SSCommand3);
    registra("SSCommand4", SSCommand4);
    registra("SSCommand5", SSCommand5);
    registra("SSCommand6", SSCommand6);
    registra("Elimina", Elimina);
    registra("Historico", Historico);
    registra("FrameGeral", FrameGeral);
    registra("criar", criar);
    registra("Label3", Label3);
    registra("Label4", Label4);
    registra("FrameFormato", FrameFormato);
    registra("FrameEnvio", FrameEnvio);
    registra("OpCmd", OpCmd);
    registra("OpCmd01", OpCmd01);
    registra("OpCmd02", OpCmd02);
    registra("Exportar", Exportar);
    registra("LabelContagem", LabelContagem);
    registra("LabelFiltro", LabelFiltro);
    registra("LabelOrdem", LabelOrdem);
    registra("Ordem", Ordem);
    registra("Decrescente", Decrescente);
    registra("Grafico", Grafico);
    Ordem.AddItem("Registro");
    for (const QString &t : titulos_planilha())
        Ordem.AddItem(t);
    Ordem.ListIndex = 0;
    Ordem.Text = Ordem.List(0);
    LabelFiltro.Visible = false;
    // The table's columns carry their own headings; the fixed-pitch head is for the rows' text.
    Label2.Visible = false;
    liga("List1", Evento::Click, [this](int) { List1_Click(); });
    liga("SSCommand1", Evento::Click, [this](int) { SSCommand1_Click(); });
    liga("SSCommand2", Evento::Click, [this](int) { SSCommand2_Click(); });
    liga("SSCommand3", Evento::Click, [this](int) { SSCommand3_Click(); });
    liga("SSCommand4", Evento::Click, [this](int) { SSCommand4_Click(); });
    liga("SSCommand5", Evento::Click, [this](int) { SSCommand5_Click(); });
    liga("SSCommand6", Evento::Click, [this](int) { SSCommand6_Click(); });
    liga("Elimina", Evento::Click, [this](int) { Elimina_Click(); });
    liga("Historico", Evento::Click, [this](int) { Historico_Click(); });
    liga("criar", Evento::Click, [this](int) { criar_Click(); });
    liga("Exportar", Evento::Click, [this](int i) { Exportar_Click(i); });
    liga("Ordem", Evento::Click, [this](int) { Ordem_Click(); });
    liga("Decrescente", Evento::Click, [this](int) { Decrescente_Click(); });
    liga("Grafico", Evento::Click, [this](int i) { Grafico_Click(i); });
}

void Relato::Form_Load() {
    if (AbreTabelas(sessao, desktop, 0, 0, 0, 1) == -2) {
        // A database held locked from the start has been told as such when it was opened;
        // its register is not an empty one.
        Ilegivel = sessao.Banco && sessao.Banco->Travada();
        if (!Ilegivel) Text1[5].Caption = formata_centavos(0, "###,###,###,###,##0.00");
        avisa_base_ausente(sessao, desktop);
        return;
    }
    aberta_ = true;
    CarregaListaLog();
}

void Relato::Form_Unload() {
    if (aberta_) FechaTabelas(sessao, 0, 0, 0, 1);
}

bool Relato::CarregaListaLog() {
    List1.Clear();
    Total = 0;
    linhas_.reset();
    somas_.reset();
    LabelContagem.Caption.clear();
    if (!aberta_) return false;
    // The list keeps its own copy of the rows: a click narrows the shared set to one cheque
    // while the list still shows them all. Its texts are made as they are shown.
    RecordSet &rs = Conjunto(sessao, TabLog);
    if (rs.Aberto() && (OrdemColuna >= 0 || !OrdemCrescente ||
                        rs.Sql().contains(QStringLiteral(" order by "), Qt::CaseInsensitive))) {
        RecordSet ordenado;
        if (ordena_log(ordenado, rs, OrdemColuna, OrdemCrescente)) rs = std::move(ordenado);
    }
    // Any condition on the select is a filter the operator set (or one cheque, after a click).
    LabelFiltro.Visible =
        rs.Aberto() && rs.Sql().contains(QStringLiteral(" where "), Qt::CaseInsensitive);
    auto linhas = std::make_shared<RecordSet>(rs.Aberto() ? rs.Copia() : RecordSet());
    const QList<QStringList> valores = linhas->Colunas({"V_CH", "StCancel", "Index"});
    // A select that failed, or rows that could not be read, is a register held by another
    // program, not an empty one.
    Ilegivel = !linhas->Aberto() || valores.size() != linhas->RecordCount();
    if (Ilegivel) {
        Text1[5].Caption.clear();
        LimpaDetalhe();
        avisa_registro_ilegivel(sessao, desktop);
        return false;
    }
    bool mostrado = false;
    for (const QStringList &f : valores) {
        if (f[1] != "C") Total += centavos(f[0]).value_or(0);
        mostrado = mostrado || (!Mostrado.isEmpty() && f[2] == Mostrado);
    }
    // The commands on the shown cheque act only on a cheque the operator can see in the list.
    if (!mostrado) LimpaDetalhe();
    const QStringList campos = linhas->Campos();
    colunas_.clear();
    for (const QString &c : campos_planilha())
        colunas_ << linhas->Coluna(c);
    List1.Itens.fonte(linhas->RecordCount(), [linhas, campos](int i) {
        const QStringList f = linhas->Linha(i);
        // A row that could not be read stays empty rather than pose as a cheque of blanks.
        if (f.isEmpty()) return QString();
        QMap<QString, QString> registro;
        for (int c = 0; c < campos.size(); ++c)
            registro.insert(campos[c], f.value(c));
        return LinhaRelatorio(registro);
    });
    Text1[5].Caption = formata_centavos(Total, "###,###,###,###,##0.00");
    const int n = linhas->RecordCount();
    LabelContagem.Caption = n == 1 ? QStringLiteral("1 cheque") : QString("%1 cheques").arg(n);
    linhas_ = linhas;
    return true;
}

void Relato::CarregaDetalhe(const QString &Index) {
    if (Index.isEmpty()) return;
    ExisteCodigo(sessao, Index, TabLog);
    RecordSet &rs = Conjunto(sessao, TabLog);
    if (!rs.Aberto()) return avisa_registro_ilegivel(sessao, desktop);
    rs.MoveFirst();
    if (rs.Eof()) return;
    const auto ou_branco = [](const QString &t) { return t.isEmpty() ? QStringLiteral(" ") : t; };
    const QString banco = rs.Campo("Banco");
    const QString valor = rs.Campo("V_CH");
    const QString favorecido = rs.Campo("Favor");
    const QString cidade = rs.Campo("Local");
    const QString data = rs.Campo("Data");
    const QString numero = rs.Campo("NRCH");
    const QString cancelado = rs.Campo("StCancel");
    const QStringList comentarios = {rs.Campo("Comentario"), rs.Campo("Comentario1"),
                                     rs.Campo("Comentario2")};
    // The bank's name is looked up in its own table; the current set of Log stays on the
    // cheque.
    Text1[0].Caption = banco + " - " + NomeBanco(sessao, banco);
    Text1[1].Caption = mascara_valor(valor, "##,###,###,##0.00");
    Text1[2].Caption = ou_branco(favorecido);
    Text1[3].Caption = ou_branco(cidade);
    Text1[4].Caption = ou_branco(data);
    Text1[6].Caption = ou_branco(numero);
    Text1[7].Caption = cancelado == "C" ? QStringLiteral("C") : QStringLiteral(" ");
    for (int i = 0; i < 3; ++i)
        Text1[8 + i].Caption = comentarios[i];
    sessao.UltimoComentario = comentarios;
    Mostrado = Index;
}

void Relato::ListaCompletaLog() {
    if (AbreTabelas(sessao, desktop, 0, 0, 0, 1) == -2) return;
    CarregaListaLog();
}

void Relato::LimpaDetalhe() {
    for (auto &[i, t] : Text1)
        if (i != 5) t.Caption.clear();
    Mostrado.clear();
}

QString Relato::DescricaoCheque() const {
    return descreve_cheque(Text1[0].Caption, Text1[6].Caption, Text1[1].Caption, Text1[2].Caption,
                           Text1[4].Caption);
}

void Relato::List1_Click() {
    const QString linha = List1.List(List1.ListIndex);
    if (linha.isEmpty()) return;
    CarregaDetalhe(linha.right(10).trimmed());
}

void Relato::SSCommand1_Click() {
    if (Ilegivel) return avisa_registro_ilegivel(sessao, desktop);
    if (List1.ListCount() == 0) {
        desktop.MsgBox("Não é possivel enviar relatório!\rNenhum registro encontrado!", Botoes::OK,
                       "    Relatório sem registros");
        return;
    }
    std::optional<FormatoLista> formato;
    if (OpCmd01[1].Value)
        formato = FormatoLista::Compacto;
    else if (OpCmd[1].Value)
        formato = FormatoLista::Normal;
    std::optional<DestinoLista> destino;
    if (OpCmd[0].Value)
        destino = DestinoLista::Vexa;
    else if (OpCmd01[0].Value)
        destino = DestinoLista::Arquivo;
    else if (OpCmd02[0].Value)
        destino = DestinoLista::Windows;
    if (!formato || !destino) return;
    // The rows are read from the register as they are reached; one that could not be read
    // would print as a gap.
    const QStringList linhas = List1.Itens.lista();
    if (linhas.contains(QString())) return avisa_registro_ilegivel(sessao, desktop);
    // The lists print the rows as the list shows them; the walk moves the chosen row along,
    // from a list where the row current at the start is no longer chosen.
    List1.SetSelected(List1.ListIndex, false);
    // The progress follows the rows as the pages are made, from the first row (after the
    // question of the cheque printer) to the last; Cancelar there stops before anything
    // reaches the printer or the file.
    std::unique_ptr<Progresso> p;
    envia_lista(sessao, desktop, linhas, *formato, *destino, [this, &p, &linhas](int i) {
        if (!p) {
            p = desktop.AbreProgresso("Enviar Lista");
            p->Etapa(QString("Montando a lista de %1 cheques...").arg(linhas.size()),
                     int(linhas.size()));
        }
        List1.SetSelected(i, true);
        List1.SetSelected(i - 1, false);
        List1.ListIndex = i;
        const bool continua = segue(p.get(), i);
        if (!continua || i + 1 == linhas.size()) p.reset();
        return continua;
    });
    Refresh();
}

void Relato::SSCommand4_Click() {
    abre_tela(sessao, desktop, telas::ExcluiRel);
}

void Relato::RemoveLinhas(const std::set<int> &linhas) {
    if (linhas.empty()) return;
    const LinhasLista antes = List1.Itens;
    auto ficam = std::make_shared<std::vector<int>>();
    ficam->reserve(size_t(qMax(0, antes.size() - int(linhas.size()))));
    auto fora = linhas.begin();
    for (int i = 0; i < antes.size(); ++i) {
        while (fora != linhas.end() && *fora < i)
            ++fora;
        if (fora == linhas.end() || *fora != i) ficam->push_back(i);
    }
    List1.Itens.fonte(int(ficam->size()), [antes, ficam](int i) { return antes.at((*ficam)[i]); });
    List1.Selecionadas.clear();
    if (List1.ListIndex >= List1.ListCount()) List1.ListIndex = List1.ListCount() - 1;
}

void Relato::SSCommand2_Click() {
    Unload();
}

void Relato::SSCommand3_Click() {
    if (Text1[0].Caption.isEmpty()) return;
    // The bank of the cheque shown, which the question names.
    const QString codigo = Text1[0].Caption.left(3);
    if (ExisteCodigo(sessao, codigo, TabBancos) == 0) {
        if (!Conjunto(sessao, TabBancos).Aberto()) return avisa_registro_ilegivel(sessao, desktop);
        desktop.MsgBox("Banco inexistente, não é possível re-imprimir!", Botoes::OK, "Erro",
                       Icone::Exclamacao);
        return;
    }
    const QString cancelado = Text1[7].Caption == "C"
                                  ? QStringLiteral("O cheque atual possui status de cancelado!\n")
                                  : QString();
    if (desktop.MsgBox(cancelado + "Confirma reimpressão?\n\n" + DescricaoCheque(), Botoes::YesNo,
                       QString(), Icone::Pergunta, Resposta::No) != Resposta::Yes)
        return;
    if (auto *principal = dynamic_cast<Main *>(desktop.Aberta(telas::Main))) {
        Main &m = *principal;
        m.Muda(m.Text1[0], codigo);
        m.Label1[6].Caption = NomeBanco(sessao, codigo);
        m.Muda(m.Text1[1], Text1[1].Caption);
        m.Muda(m.Text1[2], Text1[2].Caption);
        m.Muda(m.Text1[3], Text1[3].Caption);
        m.Muda(m.Text1[4], Text1[4].Caption);
        m.Muda(m.Text1[6], Text1[6].Caption);
        m.CheckBox.Value = 0;
        m.IndexReimpresso = Mostrado;
        m.SetFocus(m.CheckBox);
        for (int i = 0; i < 3; ++i)
            m.Muda(m.Text2[i], sessao.UltimoComentario.value(i));
        m.Refresh();
    }
    Unload();
}

void Relato::SSCommand5_Click() {
    ListaCompletaLog();
    LimpaDetalhe();
}

void Relato::SSCommand6_Click() {
    abre_tela(sessao, desktop, telas::Filtro);
}

void Relato::Historico_Click() {
    if (auto *h =
            dynamic_cast<HistoricoCheque *>(abre_tela(sessao, desktop, telas::HistoricoCheque)))
        h->Mostra(Mostrado);
}

void Relato::Elimina_Click() {
    if (Text1[0].Caption.isEmpty()) return;
    if (desktop.MsgBox("Este Cheque Será Eliminado Da Base de Dados de seu computador!\n\n" +
                           DescricaoCheque() + "\n\nTem Certeza que deseja Eliminá-lo?",
                       Botoes::YesNo, "Atenção", Icone::Pergunta, Resposta::No) != Resposta::Yes)
        return;
    // The cheque shown, whatever the current set became since it was chosen.
    RecordSet &rs = Conjunto(sessao, TabLog);
    if (ExisteCodigo(sessao, Mostrado, TabLog) == 1) {
        rs.MoveFirst();
        if (!rs.Delete()) avisa_registro_nao_gravado(desktop, true);
    } else if (!rs.Aberto()) {
        return avisa_registro_ilegivel(sessao, desktop);
    }
    ListaCompletaLog();
    LimpaDetalhe();
}

void Relato::criar_Click() {
    cria_relatorio_geral(sessao, desktop);
}

} // namespace vexa
