#include "core/montagem.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

#include <sys/mount.h>
#include <unistd.h>

namespace vexa::teste {

namespace {
constexpr char MarcaFilho[] = "VEXA_TESTE_MONTAGEM";
}

Filho roda_em_montagem_propria() {
    if (qEnvironmentVariableIsSet(MarcaFilho)) return Filho::Dentro;
    const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
    const QString filtro =
        QString::fromUtf8(info->test_suite_name()) + '.' + QString::fromUtf8(info->name());
    QProcess filho;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(MarcaFilho, "1");
    filho.setProcessEnvironment(ambiente);
    filho.setProcessChannelMode(QProcess::MergedChannels);
    filho.start("unshare", {::geteuid() == 0 ? "-m" : "-rm",
                            QCoreApplication::applicationFilePath(), "--gtest_filter=" + filtro});
    if (!filho.waitForStarted(10000)) return Filho::SemMontagem;
    filho.waitForFinished(60000);
    const QByteArray saida = filho.readAll();
    if (saida.contains("[  PASSED  ] 1 test") && !saida.contains("[  SKIPPED ]"))
        return Filho::Passou;
    if (saida.contains("[  FAILED  ]")) {
        ADD_FAILURE() << "no filho:\n" << saida.toStdString();
        return Filho::Falhou;
    }
    return Filho::SemMontagem;
}

Montagem::Montagem(const QString &pasta_, int kib) : pasta(pasta_) {
    const QByteArray opcoes = "size=" + QByteArray::number(kib) + "k,mode=0700";
    montada =
        ::mount("tmpfs", QFile::encodeName(pasta).constData(), "tmpfs", 0, opcoes.constData()) == 0;
}

Montagem::~Montagem() {
    // The folder under it goes back to its owner, empty, to be removed as usual.
    if (montada) ::umount2(QFile::encodeName(pasta).constData(), MNT_DETACH);
}

bool monta_so_leitura(const QString &pasta) {
    return ::mount(nullptr, QFile::encodeName(pasta).constData(), nullptr, MS_REMOUNT | MS_RDONLY,
                   nullptr) == 0;
}

} // namespace vexa::teste
