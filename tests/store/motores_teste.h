#pragma once
// Store tests run on both engines: SQLite in the test's folder, and a new database of the test
// server that ctest starts (tests/pg/servidor.sh) on a socket in a folder the build names; the
// environment variable VEXA_PG_TESTE may name another socket folder.
#include <QString>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

namespace vexa::teste {

enum class MotorTeste { SQLite, PostgreSQL };

// Points the VEXA.INI of the folder at the engine; for the server, at a new empty database.
// Empty, or why the test can't run on that engine.
QString prepara_motor(const QString &pasta, MotorTeste motor);

inline std::string nome_motor(MotorTeste m) {
    return m == MotorTeste::SQLite ? "SQLite" : "PostgreSQL";
}
inline const auto Motores = ::testing::Values(MotorTeste::SQLite, MotorTeste::PostgreSQL);

// A fixture whose tests run on each engine: the derived class names the engine of the run.
class ComMotor : public ::testing::Test {
  protected:
    virtual MotorTeste motor() const = 0;
    // To be called first in SetUp; the test is skipped when its engine isn't there.
    void prepara(const QString &pasta) {
        const QString erro = prepara_motor(pasta, motor());
        if (!erro.isEmpty()) GTEST_SKIP() << erro.toStdString();
    }
    bool no_servidor() const { return motor() == MotorTeste::PostgreSQL; }
};

// The engine alone as the parameter.
template <typename Base>
class PorMotor : public Base, public ::testing::WithParamInterface<MotorTeste> {
  protected:
    MotorTeste motor() const override { return this->GetParam(); }
};

// The engine and a case of a table test.
template <typename Base, typename Caso>
class PorMotorECaso : public Base,
                      public ::testing::WithParamInterface<std::tuple<MotorTeste, Caso>> {
  protected:
    MotorTeste motor() const override { return std::get<0>(this->GetParam()); }
    const Caso &caso() const { return std::get<1>(this->GetParam()); }
};

struct NomeDoMotor {
    template <typename T> std::string operator()(const ::testing::TestParamInfo<T> &i) const {
        if constexpr (std::is_same_v<T, MotorTeste>)
            return nome_motor(i.param);
        else
            return nome_motor(std::get<0>(i.param)) + "_" + std::to_string(i.index);
    }
};

} // namespace vexa::teste
