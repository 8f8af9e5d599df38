#include "store/copia_registro.h"

#include "store/bancos_padrao.h"
#include "store/basedados.h"
#include "store/historico.h"
#include "store/leitura_direta.h"
#include "store/tabelas.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSqlError>
#include <cstdio>

namespace vexa {

namespace {

// Rows written by one statement: few round trips to a server, far below SQLite's limit of
// values in one statement.
constexpr int LinhasPorComando = 100;

struct TabelaCopiada {
    QString Nome;
    QStringList Campos;
    QString Ordem;
};

const QList<TabelaCopiada> &tabelas_copiadas() {
    static const QList<TabelaCopiada> t = [] {
        QList<TabelaCopiada> l;
        for (const DefTabela &d : tabelas_do_programa())
            l.append({d.Nome, d.Campos, "rowid"});
        l.append({"Talao", {"Banco", "Proximo"}, "Banco"});
        l.append({"Historico",
                  QStringList{"Id", "Quando", "Usuario", "Maquina", "Acao"} + campos_historico(),
                  "Id"});
        l.append({"Pendente", QStringList{"Id"} + QString(CamposPendente).split(", "), "Id"});
        return l;
    }();
    return t;
}

QString colunas(const QStringList &campos) {
    QStringList c;
    for (const QString &n : campos)
        c << '"' + n + '"';
    return c.join(',');
}

qint64 conta(const QSqlDatabase &db, const QString &tabela) {
    QSqlQuery q(db);
    return executa(q, "SELECT count(*) FROM " + tabela) && q.next() ? q.value(0).toLongLong() : -1;
}

// Whether the register holds anything a new one doesn't: every row of the layouts must be a
// preset bank's as delivered, and every other table empty.
bool tem_dados(const QSqlDatabase &db) {
    for (const TabelaCopiada &t : tabelas_copiadas()) {
        QSet<QStringList> padroes;
        for (const LinhaPadrao &l : linhas_padrao())
            if (l.Tabela == t.Nome) padroes.insert(l.Campos);
        if (padroes.isEmpty()) {
            if (conta(db, t.Nome) != 0) return true;
            continue;
        }
        LeituraDireta q(db, "SELECT " + colunas(t.Campos) + " FROM " + t.Nome);
        while (q.Proxima()) {
            QStringList linha;
            for (int c = 0; c < t.Campos.size(); ++c)
                linha << q.Texto(c);
            if (!padroes.contains(linha)) return true;
        }
        if (q.Falhou()) return true;
    }
    return false;
}

// The rows of one table from origem to destino, LinhasPorComando to a statement.
bool copia_tabela(const QSqlDatabase &origem, const QSqlDatabase &destino, const TabelaCopiada &t) {
    const int n = int(t.Campos.size());
    const QString marcas = "(" + QStringList(n, "?").join(',') + ")";
    const auto insere = [&](int linhas) {
        return "INSERT INTO " + t.Nome + " (" + colunas(t.Campos) + ") VALUES " +
               QStringList(linhas, marcas).join(',');
    };
    QSqlQuery cheio(destino);
    if (!prepara(cheio, insere(LinhasPorComando))) return false;
    LeituraDireta leitura(origem, "SELECT " + colunas(t.Campos) + " FROM " + t.Nome + " ORDER BY " +
                                      t.Ordem);
    QVariantList valores;
    const auto grava = [&](QSqlQuery &q) {
        for (const QVariant &v : valores)
            q.addBindValue(v);
        valores.clear();
        return q.exec();
    };
    while (leitura.Proxima()) {
        for (int c = 0; c < n; ++c)
            valores << leitura.Texto(c);
        if (valores.size() == n * LinhasPorComando && !grava(cheio)) return false;
    }
    if (leitura.Falhou()) return false;
    if (valores.isEmpty()) return true;
    QSqlQuery resto(destino);
    return prepara(resto, insere(int(valores.size() / n))) && grava(resto);
}

bool copia_tudo(const QSqlDatabase &origem, QSqlDatabase &destino) {
    QSqlQuery q(destino);
    for (const char *t : {"Bancos", "Transferencia", "Script"})
        if (!executa(q, QString("DELETE FROM ") + t)) return false;
    for (const TabelaCopiada &t : tabelas_copiadas())
        if (!copia_tabela(origem, destino, t)) return false;
    // The numbers the server gives the next entries go on after those copied.
    if (eh_postgres(destino))
        for (const QString t : {"historico", "pendente"})
            if (!q.exec("SELECT setval(pg_get_serial_sequence('" + t +
                        "', 'id'), coalesce(max(id), "
                        "0) + 1, false) FROM " +
                        t))
                return false;
    return true;
}

} // namespace

QString CopiaRegistro::Relatorio() const {
    QString texto;
    for (const ContagemTabela &c : Contagens)
        texto += QStringLiteral("%1: %2 na origem, %3 no destino\n")
                     .arg(c.Tabela, -14)
                     .arg(c.Origem)
                     .arg(c.Destino);
    return texto + (Copiado ? QStringLiteral("Registro copiado.\n") : Erro + "\n");
}

CopiaRegistro copia_registro(const ConfigBase &de, const ConfigBase &para) {
    CopiaRegistro r;
    if (de == para) {
        r.Erro = "A origem e o destino são o mesmo registro: nada foi copiado.";
        return r;
    }
    if (de.motor == Motor::SQLite && !QFileInfo(de.Arquivo).isFile()) {
        r.Erro = "O banco de dados \"" + de.Arquivo + "\" não foi encontrado.";
        return r;
    }
    BaseDados origem(de);
    if (!origem.Abre()) {
        r.Erro = "O registro de origem (" + de.Descricao() + ") não pôde ser aberto.";
        return r;
    }
    // A new file is made aside and takes its name only when whole.
    ConfigBase alvo = para;
    const bool arquivoNovo = para.motor == Motor::SQLite && !QFileInfo::exists(para.Arquivo);
    if (arquivoNovo) {
        alvo.Arquivo = para.Arquivo + ".novo";
        QFile::remove(alvo.Arquivo);
        if (!cria_arquivo_base(alvo.Arquivo, false)) {
            QFile::remove(alvo.Arquivo);
            r.Erro = "O banco de dados \"" + para.Arquivo + "\" não pôde ser criado.";
            return r;
        }
    }
    bool ok = false;
    {
        BaseDados destino(alvo);
        if (!destino.Abre()) {
            r.Erro = "O registro de destino (" + para.Descricao() + ") não pôde ser aberto.";
        } else if (tem_dados(destino.db())) {
            r.Erro = "O registro de destino (" + para.Descricao() +
                     ") já tem dados: a cópia só vai para um registro vazio. Nada foi copiado.";
        } else {
            QSqlDatabase db = destino.db();
            ok = db.transaction() && copia_tudo(origem.db(), db);
            for (const TabelaCopiada &t : tabelas_copiadas()) {
                r.Contagens.append({t.Nome, conta(origem.db(), t.Nome), conta(db, t.Nome)});
                ok = ok && r.Contagens.last().Origem == r.Contagens.last().Destino;
            }
            if (ok) ok = db.commit();
            if (!ok) {
                db.rollback();
                r.Erro = "A cópia não se completou (" + db.lastError().text().trimmed() +
                         "): nada foi copiado.";
            }
        }
    }
    if (arquivoNovo) ok = ok && QFile::rename(alvo.Arquivo, para.Arquivo);
    if (arquivoNovo && !ok) QFile::remove(alvo.Arquivo);
    r.Copiado = ok;
    return r;
}

int copia_registro_comando(const Sessao &s, const QStringList &Parametros) {
    const auto config = [&s](const QString &p) {
        return p.compare("servidor", Qt::CaseInsensitive) == 0 ? config_servidor(s)
                                                               : config_de_endereco(p);
    };
    const CopiaRegistro r =
        copia_registro(config(Parametros.value(0)), config(Parametros.value(1)));
    std::fputs(r.Relatorio().toLocal8Bit().constData(), r.Copiado ? stdout : stderr);
    return r.Copiado ? 0 : 1;
}

} // namespace vexa
