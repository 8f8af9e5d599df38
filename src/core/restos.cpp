#include "core/restos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSqlDatabase>

namespace vexa {

namespace {

// The files written whole (a new file beside the old, renamed over it): the temporary takes
// the file's name and six letters or digits.
const QStringList GravadosInteiros = {"VEXA.INI", "ChequeTransf.txt", "Extenso.ret"};

bool eh_temporario(const QString &nome) {
    static const QRegularExpression sufixo(QStringLiteral("^\\.[A-Za-z0-9]{6}$"));
    for (const QString &base : GravadosInteiros)
        if (nome.size() == base.size() + 7 && nome.startsWith(base, Qt::CaseInsensitive) &&
            sufixo.match(nome.mid(base.size())).hasMatch())
            return true;
    return false;
}

// Reading a database's schema makes SQLite recover it: a hot journal is rolled back, a
// write-ahead log is taken in and, with the last connection closed, removed.
void recupera_base(const QString &arquivo) {
    const QString conexao = QStringLiteral("vexa-recupera-") + arquivo;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conexao);
        db.setDatabaseName(arquivo);
        if (db.open()) db.tables();
        db.close();
    }
    QSqlDatabase::removeDatabase(conexao);
}

} // namespace

void recupera_restos(Sessao &s) {
    const QDir pasta(s.CaminhoApp);
    // A first start that prepares the folder makes its database aside under this same lock.
    QLockFile trava(pasta.filePath("VEXA.preparo"));
    if (!trava.tryLock(30000)) return;

    const QStringList nomes = pasta.entryList(QDir::Files | QDir::Hidden | QDir::System);
    // A database made aside is made again whole by the start that needs it: it goes with its
    // journal.
    for (const QString &nome :
         {QStringLiteral("VEXA.db.novo"), QStringLiteral("VEXA.db.novo-journal")})
        if (nomes.contains(nome)) QFile::remove(pasta.filePath(nome));
    for (const QString &nome : nomes) {
        if (eh_temporario(nome)) {
            QFile::remove(pasta.filePath(nome));
            continue;
        }
        for (const QString diario : {QStringLiteral("-journal"), QStringLiteral("-wal")}) {
            if (!nome.endsWith(diario) || nome.startsWith(QStringLiteral("VEXA.db.novo"))) continue;
            const QString base = pasta.filePath(nome.chopped(diario.size()));
            if (QFileInfo(base).isFile()) recupera_base(base);
        }
    }
}

} // namespace vexa
