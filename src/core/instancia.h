#pragma once
// One running copy per user and data folder. A second start finds the running copy through
// a local socket, hands it the fields of its command line and ends.
#include <QMap>
#include <QObject>
#include <QString>
#include <functional>

class QLocalServer;
class QLocalSocket;

namespace vexa {

class Instancia : public QObject {
    Q_OBJECT
  public:
    // The link's name for this user and data folder.
    static QString NomeLink(const QString &caminhoApp);

    explicit Instancia(const QString &nome, QObject *pai = nullptr);
    ~Instancia() override;

    // Looks for a running copy. When one answers, hands it the fields (index of the entry
    // screen's Text1 and text; none only brings it forward) and returns true.
    bool EntregaAoPrimeiro(const QMap<int, QString> &campos, int esperaMs = 2000);

    // Becomes the running copy: requests arrive in aoReceber, in the event loop.
    bool Escuta();

    // A well-formed request: the fields in index order (possibly none).
    std::function<void(const QMap<int, QString> &campos)> aoReceber;

    // The request's wire form, and its reading: false for anything not well formed.
    static QByteArray Codifica(const QMap<int, QString> &campos);
    static bool Decodifica(const QByteArray &bytes, QMap<int, QString> &campos);

  private:
    void nova_conexao();
    static bool mesmo_usuario(QLocalSocket &s);

    QString nome_;
    QLocalServer *servidor_ = nullptr;
};

} // namespace vexa
