#include "settings/importa.h"

#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "registers/banctrans.h"
#include "store/importa_mdb.h"
#include "store/recordset.h"
#include "store/tabelas.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace vexa {

namespace {

const QString Titulo = QStringLiteral("Importar do Vexa antigo");

// A file of the old folder by its name, whatever the case the old system gave it.
QString arquivo_da_pasta(const QString &pasta, const QString &nome) {
    const QDir dir(pasta);
    for (const QString &f : dir.entryList(QDir::Files))
        if (f.compare(nome, Qt::CaseInsensitive) == 0) return dir.filePath(f);
    return {};
}

// The keys of the old settings that this program reads too: the printer and the currency,
// the options, the last fields typed, the back of the cheque, the extra fields' positions and
// the schedule of instalments. The first-run mark stays this install's own.
QList<QPair<QString, QStringList>> chaves_fixas() {
    QStringList frente{"NumBanco", "Valor", "Favorecido", "Cidade"}, verso, prazo, prazos;
    for (int i = 0; i < 3; ++i)
        frente << QString("Campo0%1").arg(i) << QString("Campo0%1Lin").arg(i)
               << QString("Campo0%1Col").arg(i);
    for (int i = 0; i < 10; ++i)
        verso << QString("Linha%1").arg(i, 2, 10, QChar('0'));
    prazo << "Codigo"
          << "Banco"
          << "Cidade"
          << "Favorecido";
    for (int i = 1; i <= 12; ++i)
        prazo << QString("prazo%1").arg(i);
    for (int i = 1; i <= 4; ++i)
        prazos << QString("P%1").arg(i);
    return {
        {"Sistema", {"port", "InRel", "m_sg", "m_pl"}},
        {"Opcoes",
         {"PeriodoRelExc", "PeriodoCopExc", "UsarImpInv", "UsarImpMai", "EnvioCopia", "Script",
          "NumCObrig", "NumChkPgRel", "ConfiguraData"}},
        {"FrenteInfo", frente},
        {"Verso", verso},
        {"FrentePrazo", prazo},
        {"Prazos", prazos},
        {"InfoTransf",
         {"Banco", "Valor", "Agencia", "Conta", "Cidade", "NumeroCheque", "Comentario"}},
    };
}

// The lines of a list file of the old program (Windows-1252), blank lines left out.
QStringList linhas_lista(const QString &arquivo) {
    QFile f(arquivo);
    QStringList linhas;
    if (arquivo.isEmpty() || !f.open(QIODevice::ReadOnly)) return linhas;
    for (QString l : de_ansi(f.readAll()).split('\n')) {
        if (l.endsWith('\r')) l.chop(1);
        if (!l.trimmed().isEmpty()) linhas << l;
    }
    return linhas;
}

QString codigo_da_linha(const QString &linha) {
    return linha.trimmed().left(3);
}

// What the old folder's settings add to this program's: VEXA.INI with the old keys merged in
// and the list of transfer banks, both written whole only after the store took the data.
struct Configuracao {
    QByteArray ini, lista;
    QStringList tomadas;
    int linhas_lista = 0;
};

Configuracao prepara_configuracao(Sessao &s, const QString &pasta, const ImportacaoMdb &r) {
    Configuracao c;
    const QString velho = arquivo_da_pasta(pasta, "VEXA.INI");
    const QString velhaLista = arquivo_da_pasta(pasta, "ChequeTransf.txt");
    // The merge is made on a copy beside the settings, through the program's own writer, so
    // that the new keys take their places as any write of the program puts them.
    const QString copia = s.CaminhoIni + ".importa";
    QFile::remove(copia);
    if (QFileInfo::exists(s.CaminhoIni)) QFile::copy(s.CaminhoIni, copia);
    const auto toma = [&](const QString &secao, const QString &chave, const QString &valor,
                          const QString &origem) {
        LeGravaIni(copia, secao, chave, valor.isEmpty() ? QStringLiteral("*%*") : valor);
        c.tomadas << "[" + secao + "] " + chave + " = " + valor + origem;
    };
    const auto le_velho = [&velho](const QString &secao, const QString &chave) {
        return velho.isEmpty() ? QStringLiteral("-2") : LeGravaIni(velho, secao, chave, "");
    };
    for (const auto &[secao, chaves] : chaves_fixas())
        for (const QString &chave : chaves)
            if (const QString v = le_velho(secao, chave); v != "-2") toma(secao, chave, v, "");
    // The bank layouts' own lines, for the banks the file brought.
    for (const QString &codigo : r.bancos)
        if (const QString v = le_velho("Formato", codigo); v != "-2")
            toma("Formato", codigo, v, "");

    // Transfer layouts: the line of the old settings is the layout in force; a bank that has
    // a row in the table and no line gets one made from its row.
    QStringList lista = linhas_lista(arquivo_lista_transf(s));
    QSet<QString> naLista;
    for (const QString &l : lista)
        naLista.insert(codigo_da_linha(l));
    QStringList transf = r.transferencias;
    const QStringList velhas = linhas_lista(velhaLista);
    for (const QString &l : velhas)
        if (!transf.contains(codigo_da_linha(l))) transf << codigo_da_linha(l);
    for (const QString &codigo : transf) {
        QString v = le_velho("ChequeTransf", codigo), nome = v.mid(61), origem;
        if (v == "-2" || v.trimmed().isEmpty()) {
            if (ExisteCodigo(s, codigo, TabTransferencia) == 0) continue;
            RecordSet &rs = Conjunto(s, TabTransferencia);
            rs.MoveFirst();
            QStringList posicoes;
            for (const char *lc : {"L", "C"})
                for (int i = 1; i <= 7; ++i)
                    posicoes << rs.Campo(QLatin1String(lc) + QString::number(i));
            nome = rs.Campo("Nome");
            v = linha_transf(posicoes, nome);
            origem = " (da tabela Transferencia)";
        }
        toma("ChequeTransf", codigo, v, origem);
        if (naLista.contains(codigo)) continue;
        naLista.insert(codigo);
        // The old list's own line, as the old program wrote it, when it has one.
        QString linha = codigo + " - " + nome.trimmed();
        for (const QString &l : velhas)
            if (codigo_da_linha(l) == codigo) linha = l.trimmed();
        lista << linha;
        ++c.linhas_lista;
    }
    fecha_tabela(s, TabTransferencia);
    QFile f(copia);
    if (f.open(QIODevice::ReadOnly)) c.ini = f.readAll();
    f.close();
    QFile::remove(copia);
    for (const QString &l : lista)
        c.lista += para_ansi(l + "\r\n");
    return c;
}

QString relatorio(const QString &pasta, const ImportacaoMdb &r, const Configuracao *c,
                  const QString &copia) {
    QStringList t;
    t << "Importação do Vexa antigo"
      << "Data: " + agora().toString("dd/MM/yyyy hh:mm")
      << "Pasta: " + QDir::toNativeSeparators(pasta) << QString();
    if (r.fim == ImportacaoMdb::Fim::Importado)
        t << "Resultado: importado.";
    else
        t << "Resultado: NÃO importado. A base de dados ficou como estava." << QString()
          << "Motivos:" << r.problemas;
    if (!copia.isEmpty())
        t << "Cópia de segurança da base anterior: " + QDir::toNativeSeparators(copia);
    t << QString() << "Linhas lidas por tabela:";
    for (const auto &[tabela, n] : r.linhas)
        t << "  " + tabela.leftJustified(16, ' ') + formata_numero(n, "#,##0").rightJustified(9);
    if (r.predefinidos_mantidos > 0)
        t << "  Bancos predefinidos mantidos (o arquivo não os tem): " +
                 formata_numero(r.predefinidos_mantidos, "#,##0");
    t << QString()
      << "Linhas com valores duvidosos, importadas como estavam: " +
             formata_numero(r.duvidosas.size(), "#,##0");
    for (const QString &l : r.duvidosas)
        t << "  " + l;
    t << QString()
      << "Bancos usados no registro sem leiaute em Bancos: " +
             formata_numero(r.bancos_sem_leiaute.size(), "#,##0");
    for (const QString &l : r.bancos_sem_leiaute)
        t << "  " + l;
    if (!r.ignorados.isEmpty())
        t << QString()
          << "Campos do arquivo sem lugar neste programa, não importados: " +
                 r.ignorados.join(", ");
    if (c) {
        t << QString()
          << "Tomado do VEXA.INI: " + formata_numero(c->tomadas.size(), "#,##0") + " chaves";
        for (const QString &l : c->tomadas)
            t << "  " + l;
        t << QString()
          << "ChequeTransf.txt: " + formata_numero(c->linhas_lista, "#,##0") +
                 " bancos acrescentados";
    }
    return t.join("\r\n") + "\r\n";
}

} // namespace

void ImportaVexaAntigo(Sessao &s, Desktop &d) {
    const QString pasta = d.EscolhePasta("Pasta do Vexa antigo (a que tem o VEXA.MDB)");
    if (!pasta.isEmpty()) importa_pasta(s, d, pasta);
}

bool importa_pasta(Sessao &s, Desktop &d, const QString &pasta) {
    const QString mdb = arquivo_da_pasta(pasta, "VEXA.MDB");
    if (mdb.isEmpty()) {
        d.MsgBox("A pasta \"" + QDir::toNativeSeparators(pasta) +
                     "\" não tem o arquivo VEXA.MDB do Vexa antigo.",
                 Botoes::OK, Titulo, Icone::Exclamacao);
        return false;
    }
    QString copia;
    const bool substitui = base_tem_dados(s, d);
    if (substitui) {
        const Resposta r = d.MsgBox(
            "A base de dados deste programa já tem cheques ou cadastros, e a importação os "
            "substitui pelos do Vexa antigo.\n\nFazer uma cópia de segurança da base atual e "
            "substituí-la?",
            Botoes::YesNo, Titulo, Icone::Exclamacao, Resposta::No);
        if (r != Resposta::Yes) return false;
        copia = s.CaminhoApp + "/VEXA-antes-da-importacao-" + agora().toString("yyyyMMdd-hhmmss") +
                ".db";
        if (!copia_base(s, copia)) {
            d.MsgBox("Não foi possível fazer a cópia de segurança da base de dados em \"" +
                         QDir::toNativeSeparators(copia) +
                         "\". Nada foi importado e a base ficou como estava.",
                     Botoes::OK, Titulo, Icone::Exclamacao);
            return false;
        }
    }

    ImportacaoMdb r;
    Configuracao c;
    {
        const auto progresso = d.AbreProgresso(Titulo);
        r = importa_mdb(s, d, mdb, *progresso, substitui);
        if (r.fim == ImportacaoMdb::Fim::Importado) {
            progresso->Etapa("Lendo VEXA.INI e ChequeTransf.txt...");
            c = prepara_configuracao(s, pasta, r);
        }
    }
    if (r.fim == ImportacaoMdb::Fim::Cancelado) {
        d.MsgBox("Importação cancelada. A base de dados ficou como estava.", Botoes::OK, Titulo,
                 Icone::Informacao);
        return false;
    }
    const bool importado = r.fim == ImportacaoMdb::Fim::Importado;
    QString avisoConfiguracao;
    if (importado &&
        (!grava_inteiro(s.CaminhoIni, c.ini) || !grava_inteiro(arquivo_lista_transf(s), c.lista)))
        avisoConfiguracao = "\n\nAs configurações do VEXA.INI e a lista ChequeTransf.txt não "
                            "foram gravadas: o disco está cheio ou os arquivos não aceitam "
                            "gravação.";
    const QString texto = relatorio(pasta, r, importado ? &c : nullptr, copia);
    const QString arquivo =
        s.CaminhoApp + "/Importacao-" + agora().toString("yyyyMMdd-hhmmss") + ".txt";
    const bool gravado = grava_inteiro(arquivo, "\xEF\xBB\xBF" + texto.toUtf8());
    const QString onde =
        gravado ? "\n\nO relatório completo está em \"" + QDir::toNativeSeparators(arquivo) + "\"."
                : QString("\n\nO relatório não pôde ser gravado.");
    if (!importado) {
        d.MsgBox("A importação não foi feita e a base de dados ficou como estava:\n\n" +
                     r.problemas.join("\n") + onde,
                 Botoes::OK, Titulo, Icone::Exclamacao);
        return false;
    }
    QStringList resumo;
    for (const auto &[tabela, n] : r.linhas)
        resumo << tabela + ": " + formata_numero(n, "#,##0");
    d.MsgBox(
        "Importação concluída.\n\n" + resumo.join("\n") + "\n\nLinhas com valores duvidosos: " +
            formata_numero(r.duvidosas.size(), "#,##0") + "\nBancos do registro sem leiaute: " +
            formata_numero(r.bancos_sem_leiaute.size(), "#,##0") +
            "\nChaves tomadas do VEXA.INI: " + formata_numero(c.tomadas.size(), "#,##0") +
            "\n\nAs configurações importadas valem a partir da próxima abertura do "
            "programa." +
            avisoConfiguracao + onde,
        Botoes::OK, Titulo, Icone::Informacao);
    return true;
}

} // namespace vexa
