#include "store/motores_teste.h"

#include "core/ini.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace vexa::teste {

QString prepara_motor(const QString &pasta, MotorTeste motor) {
    if (motor == MotorTeste::SQLite) return {};
    const QString socket = qEnvironmentVariable("VEXA_PG_TESTE", VEXA_PG_TESTE);
    if (!QFileInfo::exists(socket + "/.s.PGSQL.5432"))
        return "no PostgreSQL server for the tests at " + socket +
               ": ctest starts one (tests/pg/servidor.sh start " + socket +
               "); VEXA_PG_TESTE may name the socket folder of another";
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
