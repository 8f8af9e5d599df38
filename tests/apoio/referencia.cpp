#include "apoio/referencia.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <gtest/gtest.h>
#include <string>

namespace vexa::teste {

QString le_utf8(const QString &caminho) {
    QFile f(caminho);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

namespace {
std::string visivel(QString linha) {
    return linha.replace("\r", "\\r").toStdString();
}
} // namespace

void confere_referencia(const QString &obtido, const QString &nome) {
    // VEXA_GRAVA_REFERENCIAS=1 writes a missing reference from what was obtained, to be read
    // line by line before it is committed.
    const QString arquivo = QStringLiteral(VEXA_TESTES_DADOS "/") + nome;
    if (qEnvironmentVariableIntValue("VEXA_GRAVA_REFERENCIAS") == 1 && !QFile::exists(arquivo)) {
        QDir().mkpath(QFileInfo(arquivo).path());
        QFile f(arquivo);
        if (f.open(QIODevice::WriteOnly)) f.write(obtido.toUtf8());
    }
    const QString esperado = le_utf8(QStringLiteral(VEXA_TESTES_DADOS "/") + nome);
    ASSERT_FALSE(esperado.isEmpty()) << "reference file missing: " << nome.toStdString();
    if (obtido == esperado) return;
    const QStringList a = esperado.split('\n'), b = obtido.split('\n');
    std::string diff;
    for (qsizetype i = 0; i < qMax(a.size(), b.size()); ++i)
        if (a.value(i) != b.value(i))
            diff += "line " + std::to_string(i + 1) + "\n- " + visivel(a.value(i)) + "\n+ " +
                    visivel(b.value(i)) + "\n";
    ADD_FAILURE() << nome.toStdString() << " differs:\n" << diff;
}

} // namespace vexa::teste

void PrintTo(const QString &texto, std::ostream *os) {
    *os << '"' << texto.toStdString() << '"';
}

void PrintTo(const QStringList &lista, std::ostream *os) {
    *os << '{';
    for (qsizetype i = 0; i < lista.size(); ++i) {
        if (i) *os << ", ";
        PrintTo(lista[i], os);
    }
    *os << '}';
}
