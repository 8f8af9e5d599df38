#include "store/motor.h"

#include "core/ini.h"
#include "core/relogio.h"
#include "store/bancos_padrao.h"
#include "store/basedados.h"
#include "store/historico.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSysInfo>
#include <QUrl>
#include <dlfcn.h>

namespace vexa {

QString ConfigBase::Descricao() const {
    if (motor == Motor::SQLite) return QFileInfo(Arquivo).fileName();
    return Base + " no servidor " + Servidor;
}

namespace {
QString chave_sistema(const Sessao &s, const char *nome, const QString &padrao) {
    const QString v = LeGravaIni(s.CaminhoIni, "Sistema", nome, "").trimmed();
    return v == "-2" || v.isEmpty() ? padrao : v;
}
} // namespace

ConfigBase le_config_base(const Sessao &s) {
    if (chave_sistema(s, "Banco", "SQLite").compare("PostgreSQL", Qt::CaseInsensitive) == 0)
        return config_servidor(s);
    ConfigBase c;
    c.Arquivo = s.CaminhoApp + "/VEXA.db";
    return c;
}

ConfigBase config_servidor(const Sessao &s) {
    const auto chave = [&s](const char *nome, const QString &padrao) {
        return chave_sistema(s, nome, padrao);
    };
    ConfigBase c;
    c.Arquivo = s.CaminhoApp + "/VEXA.db";
    c.motor = Motor::PostgreSQL;
    c.Servidor = chave("Servidor", "localhost");
    c.Base = chave("BaseServidor", "vexa");
    c.Usuario = chave("UsuarioServidor", QString());
    const int porta = chave("Porta", "5432").toInt();
    if (porta > 0 && porta < 65536) c.Porta = porta;
    return c;
}

ConfigBase config_de_endereco(const QString &endereco) {
    ConfigBase c;
    static const QRegularExpression url(
        R"(^postgres(?:ql)?://(?:([^@/]*)@)?([^:/]*)(?::(\d+))?/([^?]+)$)");
    const auto m = url.match(endereco.trimmed());
    if (!m.hasMatch()) {
        c.Arquivo = endereco;
        return c;
    }
    c.motor = Motor::PostgreSQL;
    const auto texto = [](const QString &t) { return QUrl::fromPercentEncoding(t.toUtf8()); };
    c.Usuario = texto(m.captured(1));
    c.Servidor = m.captured(2).isEmpty() ? QStringLiteral("localhost") : texto(m.captured(2));
    if (!m.captured(3).isEmpty()) c.Porta = m.captured(3).toInt();
    c.Base = texto(m.captured(4));
    return c;
}

bool eh_postgres(const QSqlDatabase &db) {
    return db.driverName() == QLatin1String("QPSQL");
}

namespace {
bool no_servidor(const QSqlQuery &q) {
    return q.driver() && q.driver()->dbmsType() == QSqlDriver::PostgreSQL;
}

QString dialeto_servidor(const QString &sql) {
    static const QRegularExpression semCaixa(R"((\w+)\s*=\s*\?\s*COLLATE\s+NOCASE)",
                                             QRegularExpression::CaseInsensitiveOption);
    QString s = sql;
    s.replace(semCaixa, QStringLiteral("lower(\\1) = lower(?)"));
    QString r;
    r.reserve(s.size() + 8);
    const auto letra = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    for (qsizetype i = 0; i < s.size(); ++i) {
        const QChar c = s[i];
        if (c == u'\'' || c == u'"') {
            // A literal goes as it is; a name in quotes in lower case.
            qsizetype fim = s.indexOf(c, i + 1);
            if (fim < 0) fim = s.size() - 1;
            const QString trecho = s.mid(i, fim - i + 1);
            r += c == u'"' ? trecho.toLower() : trecho;
            i = fim;
        } else if ((c == u'L' || c == u'l') && (i == 0 || !letra(s[i - 1])) &&
                   s.mid(i, 4).compare(QLatin1String("like"), Qt::CaseInsensitive) == 0 &&
                   (i + 4 >= s.size() || !letra(s[i + 4]))) {
            r += QLatin1String("ILIKE");
            i += 3;
        } else {
            r += c;
        }
    }
    return r;
}
} // namespace

QString dialeto(const QSqlDatabase &db, const QString &sql) {
    return eh_postgres(db) ? dialeto_servidor(sql) : sql;
}

bool prepara(QSqlQuery &q, const QString &sql, const QVariantList &valores) {
    if (!q.prepare(no_servidor(q) ? dialeto_servidor(sql) : sql)) return false;
    for (const QVariant &v : valores)
        q.addBindValue(v);
    return true;
}

bool executa(QSqlQuery &q, const QString &sql, const QVariantList &valores) {
    return prepara(q, sql, valores) && q.exec();
}

QString retorna_id(const QSqlDatabase &db, const QString &coluna) {
    return eh_postgres(db) ? " RETURNING " + coluna.toLower() : QString();
}

qint64 id_inserido(QSqlQuery &q) {
    if (no_servidor(q)) return q.next() ? q.value(0).toLongLong() : 0;
    return q.lastInsertId().toLongLong();
}

const QList<DefTabela> &tabelas_do_programa() {
    static const QList<DefTabela> t = [] {
        const auto lista = [](const char *prefixo, int de, int ate) {
            QStringList l;
            for (int i = de; i <= ate; ++i)
                l << prefixo + QString::number(i);
            return l;
        };
        QStringList transf;
        for (int i = 1; i <= 7; ++i)
            transf << "L" + QString::number(i) << "C" + QString::number(i);
        return QList<DefTabela>{
            {"Bancos", QStringList{"Codigo", "Nome"} + lista("L", 1, 5) + lista("C", 1, 8), true},
            {"Transferencia", QStringList{"Codigo", "Nome"} + transf, true},
            {"Script", QStringList{"Codigo", "Nome"} + lista("l", 1, 8) + lista("c", 1, 11), true},
            {"Favorecido", {"Codigo", "Nome"}, true},
            {"Cidade", {"Codigo", "Nome"}, true},
            {"Log", campos_historico(), false},
        };
    }();
    return t;
}

QString nome_do_programa(const QString &tabela, const QString &campo) {
    static const QHash<QString, QString> nomes = [] {
        QHash<QString, QString> n;
        const auto junta = [&n](const QString &t, const QStringList &campos) {
            for (const QString &c : campos)
                n.insert(t.toLower() + '.' + c.toLower(), c);
        };
        for (const DefTabela &t : tabelas_do_programa())
            junta(t.Nome, t.Campos);
        junta("Historico",
              QStringList{"Id", "Quando", "Usuario", "Maquina", "Acao"} + campos_historico());
        junta("Talao", {"Banco", "Proximo"});
        return n;
    }();
    return nomes.value(tabela.toLower() + '.' + campo.toLower(), campo);
}

bool conexao_perdida(const QSqlDatabase &db) {
    if (!eh_postgres(db) || !db.isOpen() || !db.driver()) return false;
    // The client library is in the process already, loaded by Qt's driver: its state of the
    // connection says, without a round trip, whether the last call found the server gone.
    using Estado = int (*)(const void *);
    static const auto estado = reinterpret_cast<Estado>(dlsym(RTLD_DEFAULT, "PQstatus"));
    const QVariant h = db.driver()->handle();
    if (!estado || !h.isValid() || qstrcmp(h.typeName(), "PGconn*") != 0) return false;
    const void *conexao = *static_cast<const void *const *>(h.data());
    constexpr int ConexaoRuim = 1;
    return conexao && estado(conexao) == ConexaoRuim;
}

bool erro_de_conexao(const QSqlError &erro) {
    return erro.type() == QSqlError::ConnectionError || erro.nativeErrorCode().startsWith("08") ||
           erro.nativeErrorCode().startsWith("57P");
}

namespace {

// A date "dd/mm/yy" as "yymmdd", empty for no date, NULL for one the key can't hold: the
// server's side of the key SQLite's triggers write.
const char *const FuncoesServidor[] = {
    R"(CREATE FUNCTION cdbl(t text) RETURNS double precision LANGUAGE plpgsql IMMUTABLE AS $f$
DECLARE s text := regexp_replace(coalesce(t, ''), '^\s+|\s+$', '', 'g'); p text[];
        inteiro text; decimais text;
BEGIN
  IF position(',' in s) = 0 AND s ~ '\.[0-9]{1,2}$' THEN
    p := regexp_match(s, '^([-+]?)(?:R\$\s*)?([0-9]+(?:\.[0-9]+)*)?\.([0-9]{1,2})$');
  ELSE
    p := regexp_match(s, '^([-+]?)(?:R\$\s*)?([0-9]+(?:\.[0-9]+)*)?(?:,([0-9]*))?$');
  END IF;
  IF p IS NULL THEN RETURN 0; END IF;
  inteiro := replace(coalesce(p[2], ''), '.', '');
  decimais := coalesce(p[3], '');
  IF inteiro = '' AND decimais = '' OR length(inteiro) > 300 THEN RETURN 0; END IF;
  RETURN (p[1] || CASE WHEN inteiro = '' THEN '0' ELSE inteiro END || '.' ||
          CASE WHEN decimais = '' THEN '0' ELSE left(decimais, 300) END)::double precision;
END $f$)",
    R"(CREATE FUNCTION cvdate(t text) RETURNS bigint LANGUAGE plpgsql STABLE AS $f$
DECLARE s text := regexp_replace(coalesce(t, ''), '^\s+|\s+$', '', 'g'); g text[];
        separadores text; d text; m text; a text; completo boolean := false;
        ano int; atual int;
BEGIN
  IF s !~ '^[0-9]+([-/.][0-9]+)*$' THEN RETURN NULL; END IF;
  g := regexp_split_to_array(s, '[-/.]');
  separadores := regexp_replace(s, '[0-9]', '', 'g');
  IF array_length(g, 1) = 1 AND length(s) IN (6, 8) THEN
    d := substr(s, 1, 2); m := substr(s, 3, 2); a := substr(s, 5);
  ELSIF array_length(g, 1) = 3 AND length(g[1]) = 4 AND separadores = '--'
        AND length(g[2]) <= 2 AND length(g[3]) <= 2 THEN
    a := g[1]; m := g[2]; d := g[3]; completo := true;
  ELSIF array_length(g, 1) = 3 AND length(g[1]) <= 2 AND length(g[2]) <= 2
        AND (length(g[3]) <= 2 OR length(g[3]) = 4) THEN
    d := g[1]; m := g[2]; a := g[3];
  ELSE
    RETURN NULL;
  END IF;
  ano := a::int;
  IF NOT completo AND length(a) <> 4 THEN
    atual := extract(year FROM coalesce(nullif(current_setting('vexa.hoje', true), '')::date,
                                         current_date));
    ano := (atual / 100) * 100 + ano;
    IF ano > atual + 20 THEN ano := ano - 100; ELSIF ano <= atual - 80 THEN ano := ano + 100; END IF;
  END IF;
  IF ano < 1 OR m::int NOT BETWEEN 1 AND 12 OR d::int < 1 OR d::int >
     extract(day FROM make_date(ano, m::int, 1) + interval '1 month' - interval '1 day') THEN
    RETURN NULL;
  END IF;
  RETURN make_date(ano, m::int, d::int) - date '2000-01-01' + 2451545;
END $f$)",
    R"(CREATE FUNCTION vexa_data_chave(d text) RETURNS text LANGUAGE plpgsql IMMUTABLE AS $f$
DECLARE ano int; mes int; dia int;
BEGIN
  IF btrim(coalesce(d, '')) = '' THEN RETURN ''; END IF;
  IF substr(d, 1, 8) !~ '^[0-9]{2}/[0-9]{2}/[0-9]{2}$' THEN RETURN NULL; END IF;
  ano := 2000 + substr(d, 7, 2)::int; mes := substr(d, 4, 2)::int; dia := substr(d, 1, 2)::int;
  IF mes NOT BETWEEN 1 AND 12 OR dia < 1 OR dia >
     extract(day FROM make_date(ano, mes, 1) + interval '1 month' - interval '1 day') THEN
    RETURN NULL;
  END IF;
  RETURN substr(d, 7, 2) || substr(d, 4, 2) || substr(d, 1, 2);
END $f$)",
    R"(CREATE FUNCTION vexa_guarda_data() RETURNS trigger LANGUAGE plpgsql AS $f$
BEGIN NEW.datachave := vexa_data_chave(NEW.data); RETURN NEW; END $f$)",
    R"(CREATE FUNCTION vexa_guarda_nome() RETURNS trigger LANGUAGE plpgsql AS $f$
BEGIN NEW.nomechave := vexa_chave(NEW.nome); RETURN NEW; END $f$)",
    R"(CREATE FUNCTION historico_quando() RETURNS text LANGUAGE sql STABLE AS $f$
SELECT coalesce(nullif(current_setting('vexa.dia', true), ''), to_char(current_date, 'DD/MM/YYYY'))
       || ' ' || to_char(localtimestamp, 'HH24:MI:SS') $f$)",
    R"(CREATE FUNCTION historico_usuario() RETURNS text LANGUAGE sql STABLE AS $f$
SELECT coalesce(current_setting('vexa.usuario', true), '') $f$)",
    R"(CREATE FUNCTION historico_maquina() RETURNS text LANGUAGE sql STABLE AS $f$
SELECT coalesce(current_setting('vexa.maquina', true), '') $f$)",
    R"(CREATE FUNCTION historico_acao(a text) RETURNS text LANGUAGE sql STABLE AS $f$
SELECT coalesce(nullif(current_setting('vexa.acao', true), ''), a) $f$)",
    R"(CREATE FUNCTION vexa_historico_fixo() RETURNS trigger LANGUAGE plpgsql AS $f$
BEGIN
  IF TG_OP = 'UPDATE' THEN RAISE EXCEPTION 'O histórico não se altera'; END IF;
  RAISE EXCEPTION 'O histórico não se apaga';
END $f$)",
};

QString colunas_texto(const QStringList &campos) {
    QStringList c;
    for (const QString &n : campos)
        c << '"' + n.toLower() + "\" text COLLATE \"C\"";
    return c.join(", ");
}

} // namespace

bool cria_esquema_servidor(QSqlDatabase &db, bool padroes, QSqlError *erro) {
    QSqlQuery q(db);
    const auto roda = [&q, erro](const QString &sql) {
        if (q.exec(sql)) return true;
        if (erro) *erro = q.lastError();
        return false;
    };
    if (!db.transaction()) {
        if (erro) *erro = db.lastError();
        return false;
    }
    // Two desks opening an empty database at once: the second finds the tables made.
    bool ok = roda("SELECT pg_advisory_xact_lock(5318008)") &&
              roda("SELECT count(*) FROM pg_tables WHERE schemaname = current_schema() AND "
                   "tablename = 'log'") &&
              q.next();
    if (ok && q.value(0).toInt() > 0) return db.commit();
    q.finish();
    for (const char *f : FuncoesServidor)
        ok = ok && roda(f);
    QString chave = "CREATE FUNCTION vexa_chave(t text) RETURNS text LANGUAGE plpgsql IMMUTABLE "
                    "AS $f$ DECLARE k text; BEGIN ";
    for (const QString &passo : chave_texto_sql("t", "k"))
        chave += "k := " + passo + "; ";
    ok = ok && roda(chave + "RETURN k; END $f$");

    QStringList historico;
    for (const QString &c : campos_historico())
        historico << c;
    for (const DefTabela &t : tabelas_do_programa()) {
        const QString nome = t.Nome.toLower();
        QString sql = "CREATE TABLE " + nome + " (" + colunas_texto(t.Campos);
        // The indexes carry the row's number: a set's select of its keys reads the index
        // alone.
        if (t.ChaveCodigo)
            sql += ", PRIMARY KEY (codigo) INCLUDE (rowid), nomechave text COLLATE \"C\"";
        if (nome == "log") sql += ", datachave text COLLATE \"C\"";
        ok = ok && roda(sql + ", rowid bigint GENERATED BY DEFAULT AS IDENTITY UNIQUE)");
        if (t.ChaveCodigo)
            ok = ok &&
                 roda("CREATE INDEX " + nome + "nomechave ON " + nome +
                      " (nomechave, nome) INCLUDE (rowid)") &&
                 roda("CREATE TRIGGER " + nome + "chave BEFORE INSERT OR UPDATE OF nome ON " +
                      nome + " FOR EACH ROW EXECUTE FUNCTION vexa_guarda_nome()");
    }
    QStringList antes, depois, velhos;
    for (const QString &c : campos_historico()) {
        antes << "OLD.\"" + c.toLower() + '"';
        depois << "NEW.\"" + c.toLower() + '"';
        velhos << '"' + c.toLower() + '"';
    }
    const auto insere = [&](const QString &acao) {
        return "INSERT INTO historico (quando, usuario, maquina, acao, " + velhos.join(", ") +
               ") VALUES (historico_quando(), historico_usuario(), historico_maquina(), "
               "historico_acao(" +
               acao + "), " + antes.join(", ") + ");";
    };
    ok =
        ok && roda("CREATE INDEX logindex ON log (\"index\")") &&
        roda("CREATE INDEX logbanco ON log (banco, \"index\")") &&
        roda("CREATE INDEX lognumero ON log (banco, nrch)") &&
        roda("CREATE INDEX logdatachave ON log (datachave)") &&
        roda("CREATE TRIGGER logdata BEFORE INSERT OR UPDATE OF data ON log FOR EACH ROW "
             "EXECUTE FUNCTION vexa_guarda_data()") &&
        roda("CREATE TABLE talao (banco text COLLATE \"C\" PRIMARY KEY, proximo text COLLATE "
             "\"C\")") &&
        roda("CREATE TABLE historico (id bigint GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY, "
             "quando text, usuario text, maquina text, acao text, " +
             colunas_texto(campos_historico()) + ")") &&
        roda("CREATE INDEX historicoindex ON historico (\"index\")") &&
        roda("CREATE TRIGGER historicofixo BEFORE UPDATE OR DELETE ON historico FOR EACH ROW "
             "EXECUTE FUNCTION vexa_historico_fixo()") &&
        roda("CREATE FUNCTION vexa_historico_log() RETURNS trigger LANGUAGE plpgsql AS $f$ "
             "BEGIN IF TG_OP = 'DELETE' THEN " +
             insere("'Exclusão'") + " RETURN OLD; END IF; IF (" + antes.join(", ") +
             ") IS DISTINCT FROM (" + depois.join(", ") + ") THEN " +
             insere("CASE WHEN NEW.stcancel = 'C' AND OLD.stcancel IS DISTINCT FROM 'C' THEN "
                    "'Cancelamento' ELSE 'Alteração' END") +
             " END IF; RETURN NEW; END $f$") &&
        roda("CREATE TRIGGER historicolog BEFORE DELETE OR UPDATE ON log FOR EACH ROW EXECUTE "
             "FUNCTION vexa_historico_log()") &&
        // A cheque waiting for its print belongs to the desk that prints it: another desk,
        // starting meanwhile, must not register it or drop it.
        roda("CREATE TABLE pendente (id bigint GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY, " +
             colunas_texto(QString(CamposPendente).split(", ")) +
             ", mesa text DEFAULT current_setting('vexa.mesa', true))") &&
        // The cheques a purge removed, with their history: the server's side of the archive
        // file VEXA-expurgo.db.
        roda("CREATE TABLE expurgolog (" + colunas_texto(campos_historico()) + ", expurgo text)") &&
        roda("CREATE TABLE expurgohistorico (id bigint, quando text, usuario text, maquina "
             "text, acao text, " +
             colunas_texto(campos_historico()) + ")");
    for (const LinhaPadrao &l : padroes ? linhas_padrao() : QList<LinhaPadrao>()) {
        if (!ok) break;
        QStringList campos;
        for (const DefTabela &t : tabelas_do_programa())
            if (t.Nome == l.Tabela) campos = t.Campos.mid(0, l.Campos.size());
        const QStringList marcas(l.Campos.size(), "?");
        ok = q.prepare("INSERT INTO " + l.Tabela.toLower() + " (" + campos.join(',').toLower() +
                       ") VALUES (" + marcas.join(',') + ")");
        for (const QString &c : l.Campos)
            q.addBindValue(c);
        ok = ok && q.exec();
        if (!ok && erro) *erro = q.lastError();
    }
    q.finish();
    if (ok && db.commit()) return true;
    if (erro && ok) *erro = db.lastError();
    db.rollback();
    return false;
}

void prepara_sessao_servidor(QSqlDatabase &db) {
    QSqlQuery q(db);
    const QString usuario = qEnvironmentVariable("USER", qEnvironmentVariable("USERNAME"));
    q.prepare("SELECT set_config('vexa.usuario', ?, false), set_config('vexa.maquina', ?, "
              "false), set_config('vexa.hoje', ?, false), set_config('vexa.dia', ?, false)");
    q.addBindValue(usuario);
    q.addBindValue(QSysInfo::machineHostName());
    q.addBindValue(hoje().toString(Qt::ISODate));
    q.addBindValue(hoje().toString("dd/MM/yyyy"));
    q.exec();
}

} // namespace vexa
