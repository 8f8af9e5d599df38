#include "store/motores_teste.h"

#include "core/ini.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace vexa::teste {

QString prepara_motor(const QString &pasta, MotorTeste motor) {
    if (motor == MotorTeste::SQLite) return {};
    const QString socket = qEnvironmentVariable("VEXA_PG_TESTE");
    if (socket.isEmpty())
        return "no PostgreSQL server for the tests: ctest starts one (tests/pg/servidor.sh) and "
               "names its socket folder in VEXA_PG_TESTE";
    const QString base = "vexa_" + QUuid::createUuid().toString(QUuid::Id128);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QPSQL", base);
        db.setHostName(socket);
        db.setDatabaseName("postgres");
        db.setUserName("vexa");
        if (!db.open() || !QSqlQuery(db).exec("CREATE DATABASE " + base))
            return "the test server doesn't answer at " + socket;
        db.close();
    }
    QSqlDatabase::removeDatabase(base);
    const QString ini = pasta + "/VEXA.INI";
    for (const auto &[chave, valor] : {std::pair<QString, QString>{"Banco", "PostgreSQL"},
                                       {"Servidor", socket},
                                       {"BaseServidor", base},
                                       {"UsuarioServidor", "vexa"}})
        LeGravaIni(ini, "Sistema", chave, valor);
    return {};
}

} // namespace vexa::teste
