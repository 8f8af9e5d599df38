#include "store/copia_seguranca.h"

#include "core/arquivo.h"
#include "core/relogio.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <optional>
#include <sqlite3.h>

namespace vexa {

namespace {

const QString Formato = QStringLiteral("yyyy-MM-dd_HHmmss");
const QString SufixoAntes = QStringLiteral("_antes-da-restauracao");
const QString Parcial = QStringLiteral(".parcial-");
const QString TituloCopia = QStringLiteral("Cópia de segurança");
const QString TituloRestaura = QStringLiteral("Restaurar cópia de segurança");

QString base_de(const QString &pasta) {
    return pasta + "/VEXA.db";
}
// The cheques the start's purge took out of the register, kept beside the database.
const QString Expurgo = QStringLiteral("/VEXA-expurgo.db");

// Copies a database through SQLite's online backup: empty on success, or SQLite's reason.
QString copia_base(const QString &de, const QString &para, const ModoCopia &modo) {
    sqlite3 *origem = nullptr, *destino = nullptr;
    QString erro;
    if (sqlite3_open_v2(QFile::encodeName(de), &origem, SQLITE_OPEN_READWRITE, nullptr) !=
        SQLITE_OK) {
        erro = sqlite3_errmsg(origem);
    } else if (sqlite3_open_v2(QFile::encodeName(para), &destino,
                               SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
        erro = sqlite3_errmsg(destino);
    } else if (sqlite3_backup *b = sqlite3_backup_init(destino, "main", origem, "main")) {
        int rc = SQLITE_OK;
        // A database that another connection holds for a moment is waited for, a few seconds.
        for (int esperas = 0; esperas < 100;) {
            rc = sqlite3_backup_step(b, modo.PaginasPorPasso);
            if (rc == SQLITE_DONE) break;
            if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) {
                ++esperas;
                sqlite3_sleep(50);
            } else if (rc != SQLITE_OK) {
                break;
            }
            if (modo.AposPasso) modo.AposPasso();
        }
        sqlite3_backup_finish(b);
        if (rc != SQLITE_DONE) erro = sqlite3_errstr(rc);
    } else {
        erro = sqlite3_errmsg(destino);
    }
    sqlite3_close(origem);
    sqlite3_close(destino);
    return erro;
}

// The printer's files under de, by their path inside it; its printed sheets stay out.
QStringList arquivos_impressora(const QString &de) {
    QStringList nomes;
    QDirIterator it(de, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString nome = QDir(de).relativeFilePath(it.next());
        if (!nome.startsWith("papel/")) nomes << nome;
    }
    return nomes;
}

// Copies a file whole; empty on success.
QString copia_arquivo(const QString &de, const QString &para) {
    QFile f(de);
    if (!f.open(QIODevice::ReadOnly)) return QStringLiteral("%1 não pôde ser lido").arg(de);
    if (!QDir().mkpath(QFileInfo(para).path()) || !grava_inteiro(para, f.readAll()))
        return QStringLiteral("%1 não pôde ser gravado (disco cheio?)").arg(para);
    return {};
}

QString copia_impressora(const QString &de, const QString &para) {
    for (const QString &nome : arquivos_impressora(de))
        if (QString erro = copia_arquivo(de + "/" + nome, para + "/" + nome); !erro.isEmpty())
            return erro;
    return {};
}

std::optional<CopiaSeguranca> le_copia(const QFileInfo &pasta) {
    const QString nome = pasta.fileName();
    const QDateTime quando = QDateTime::fromString(nome.left(Formato.size()), Formato);
    if (!pasta.isDir() || !quando.isValid() || !QFileInfo::exists(base_de(pasta.filePath())))
        return std::nullopt;
    return CopiaSeguranca{pasta.filePath(), quando, nome.contains(SufixoAntes)};
}

// Writes the backup in the locked folder: the parts under a temporary name, then the rename.
QString escreve_copia(const Sessao &s, const QString &pasta, const ModoCopia &modo) {
    const QString nome = agora().toString(Formato) + (modo.AntesDeRestaurar ? SufixoAntes : "");
    QString destino = pasta + "/" + nome;
    for (int n = 2; QFileInfo::exists(destino); ++n)
        destino = pasta + "/" + nome + "-" + QString::number(n);
    QDir parcial(pasta + "/" + Parcial + QFileInfo(destino).fileName());
    if (!parcial.mkpath(".")) return QStringLiteral("a pasta %1 não pôde ser criada").arg(pasta);

    QString erro;
    if (!QFileInfo::exists(base_de(s.CaminhoApp)))
        erro = QStringLiteral("o banco de dados %1 não foi encontrado").arg(base_de(s.CaminhoApp));
    else if (QString e = copia_base(base_de(s.CaminhoApp), base_de(parcial.path()), modo);
             !e.isEmpty())
        erro = QStringLiteral("o banco de dados não pôde ser copiado (%1)").arg(e);
    if (erro.isEmpty() && QFileInfo::exists(s.CaminhoApp + Expurgo))
        if (QString e = copia_base(s.CaminhoApp + Expurgo, parcial.path() + Expurgo, modo);
            !e.isEmpty())
            erro = QStringLiteral("os cheques expurgados não puderam ser copiados (%1)").arg(e);
    if (erro.isEmpty() && QFileInfo::exists(s.CaminhoIni))
        erro = copia_arquivo(s.CaminhoIni, parcial.filePath("VEXA.INI"));
    if (erro.isEmpty())
        erro = copia_impressora(s.CaminhoApp + "/impressora", parcial.filePath("impressora"));
    if (erro.isEmpty() && !QDir().rename(parcial.path(), destino))
        erro = QStringLiteral("a cópia não pôde receber o seu nome %1").arg(destino);
    if (!erro.isEmpty()) parcial.removeRecursively();
    return erro;
}

QString falha_copia(const Sessao &s, const QString &erro) {
    return QStringLiteral("Não foi possível fazer a cópia de segurança dos dados em \"%1\":\n%2."
                          "\n\nAs cópias anteriores continuam guardadas.")
        .arg(QDir::toNativeSeparators(pasta_copias(s)), erro);
}

} // namespace

QString CopiaSeguranca::Descricao() const {
    return Quando.toString("dd/MM/yyyy HH:mm:ss") +
           (AntesDeRestaurar ? QStringLiteral(" (dados de antes de uma restauração)") : QString());
}

QString pasta_copias(const Sessao &s) {
    return s.CaminhoApp + "/backup";
}

QList<CopiaSeguranca> lista_copias(const Sessao &s) {
    QList<CopiaSeguranca> copias;
    const QFileInfoList pastas =
        QDir(pasta_copias(s)).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (auto it = pastas.crbegin(); it != pastas.crend(); ++it)
        if (auto c = le_copia(*it)) copias << *c;
    return copias;
}

QString faz_copia(const Sessao &s, const ModoCopia &modo) {
    const QString pasta = pasta_copias(s);
    if (!QDir().mkpath(pasta)) return QStringLiteral("a pasta %1 não pôde ser criada").arg(pasta);
    QLockFile trava(pasta + "/.trava");
    if (!trava.tryLock(30000)) return QStringLiteral("outra cópia de segurança está em andamento");
    // With the lock held, a temporary folder is what a backup cut short left behind.
    for (const QFileInfo &p : QDir(pasta).entryInfoList({Parcial + "*"}, QDir::Dirs | QDir::Hidden))
        QDir(p.filePath()).removeRecursively();

    if (QString erro = escreve_copia(s, pasta, modo); !erro.isEmpty()) return erro;
    const QList<CopiaSeguranca> copias = lista_copias(s);
    for (qsizetype i = CopiasGuardadas; i < copias.size(); ++i)
        QDir(copias[i].Pasta).removeRecursively();
    return {};
}

void copia_do_dia(const Sessao &s, Desktop &d) {
    for (const CopiaSeguranca &c : lista_copias(s))
        if (c.Quando.date() == hoje()) return;
    if (const QString erro = faz_copia(s); !erro.isEmpty())
        d.MsgBox(falha_copia(s, erro), Botoes::OK, TituloCopia, Icone::Exclamacao);
}

void copia_agora(const Sessao &s, Desktop &d) {
    if (const QString erro = faz_copia(s); !erro.isEmpty())
        d.MsgBox(falha_copia(s, erro), Botoes::OK, TituloCopia, Icone::Exclamacao);
    else
        d.MsgBox(QStringLiteral("Cópia de segurança feita em \"%1\".")
                     .arg(QDir::toNativeSeparators(lista_copias(s).first().Pasta)),
                 Botoes::OK, TituloCopia, Icone::Informacao);
}

bool restaura_copia(Sessao &s, Desktop &d, const CopiaSeguranca &c) {
    if (d.MsgBox(QStringLiteral("Restaurar a cópia de segurança de %1?\n\nOs dados atuais são "
                                "guardados antes numa cópia à parte, e o programa fecha depois "
                                "da restauração; abra-o de novo para continuar.")
                     .arg(c.Descricao()),
                 Botoes::YesNo, TituloRestaura, Icone::Pergunta, Resposta::No) != Resposta::Yes)
        return false;
    ModoCopia antes;
    antes.AntesDeRestaurar = true;
    if (const QString erro = faz_copia(s, antes); !erro.isEmpty()) {
        d.MsgBox(QStringLiteral("Os dados atuais não puderam ser guardados: %1.\n\nNada foi "
                                "restaurado.")
                     .arg(erro),
                 Botoes::OK, TituloRestaura, Icone::Exclamacao);
        return false;
    }
    // The run's connection lets go of the database, which the backup then overwrites whole
    // or not at all.
    s.Banco.reset();
    QString erro = copia_base(base_de(c.Pasta), base_de(s.CaminhoApp), {});
    if (!erro.isEmpty()) {
        d.MsgBox(QStringLiteral("O banco de dados não pôde ser restaurado (%1).\n\nNada foi "
                                "restaurado.")
                     .arg(erro),
                 Botoes::OK, TituloRestaura, Icone::Exclamacao);
        return false;
    }
    if (QFileInfo::exists(c.Pasta + Expurgo))
        erro = copia_base(c.Pasta + Expurgo, s.CaminhoApp + Expurgo, {});
    if (!erro.isEmpty()) erro = QStringLiteral("os cheques expurgados não voltaram (%1)").arg(erro);
    if (erro.isEmpty() && QFileInfo::exists(c.Pasta + "/VEXA.INI"))
        erro = copia_arquivo(c.Pasta + "/VEXA.INI", s.CaminhoIni);
    // The printer's memory is the backup's alone: files written since it are dropped.
    const QString impressora = s.CaminhoApp + "/impressora";
    if (erro.isEmpty()) {
        for (const QString &nome : arquivos_impressora(impressora))
            QFile::remove(impressora + "/" + nome);
        erro = copia_impressora(c.Pasta + "/impressora", impressora);
    }
    if (erro.isEmpty())
        d.MsgBox(QStringLiteral("A cópia de segurança de %1 foi restaurada.\n\nO programa "
                                "fecha agora; abra-o de novo.")
                     .arg(c.Descricao()),
                 Botoes::OK, TituloRestaura, Icone::Informacao);
    else
        d.MsgBox(QStringLiteral("A restauração parou no meio: %1.\n\nOs dados de antes dela "
                                "estão na cópia mais recente da lista. O programa fecha agora.")
                     .arg(erro),
                 Botoes::OK, TituloRestaura, Icone::Exclamacao);
    return true;
}

} // namespace vexa
