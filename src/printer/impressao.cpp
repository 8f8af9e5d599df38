#include "printer/impressao.h"

#include "core/conversoes.h"
#include "core/grava_ini.h"
#include "core/ini.h"
#include "core/tela.h"
#include "printer/impressora_sistema.h"
#include "printer/nativo.h"
#include "printer/simulador.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <limits>

namespace vexa {

namespace {

// A number as the classic Str shows it: a blank in front of a positive one.
QString str_vb(qint64 n) {
    return n < 0 ? QString::number(n) : " " + QString::number(n);
}

// The classic Trim: blanks only, so the zero byte that ends the words stays.
QString apara(const QString &texto) {
    qsizetype i = 0, f = texto.size();
    while (i < f && texto[i] == u' ')
        ++i;
    while (f > i && texto[f - 1] == u' ')
        --f;
    return texto.mid(i, f - i);
}

qint16 numero16(const QString &texto) {
    const double v = Val(texto);
    if (v < std::numeric_limits<qint16>::min()) return std::numeric_limits<qint16>::min();
    if (v > std::numeric_limits<qint16>::max()) return std::numeric_limits<qint16>::max();
    return qint16(v);
}

// A position of an extra field: a stray last character below "0" (a blank, a sign, a
// control character) is dropped before the number is read.
qint16 posicao_campo(const Sessao &s, const QString &chave) {
    QString v = LeGravaIni(s.CaminhoIni, "FrenteInfo", chave, "");
    if (!v.isEmpty() && v.back().unicode() < 48) v.chop(1);
    return numero16(v);
}

void anima(Sessao &s, qint16 Ligado) {
    if (s.Gauge1) AnimaGauge(*s.Gauge1, Ligado);
}

} // namespace

qint16 ComandoImpressora(Sessao &s, Desktop &, qint16 Operacao, const PedidoImpressora &p) {
    if (!s.Impressora) return 0;
    Vexa32 &imp = *s.Impressora;
    qint16 resultado = 1;
    anima(s, 1);
    imp.IniciaPorta(s.PortaImpressora);
    switch (Operacao) {
    case 0:
        if (p.Verifica && !p.Verifica())
            resultado = 0;
        else
            imp.IncluiBanco(p.Codigo, p.Texto);
        break;
    case 1:
        imp.IncluiFavorecido(p.Codigo, p.Texto);
        break;
    case 2:
        imp.ExcluiFavorecido(p.Codigo);
        break;
    default:
        break;
    }
    imp.FechaPorta();
    anima(s, 0);
    return resultado;
}

void Qorn_CMD(Sessao &s, Desktop &d, qint16 Operacao, const PedidoImpressora &p) {
    static const QStringList titulos = {"Cadastro de Favorecido", "Exclusão de Favorecido",
                                        "Alteração da Moeda"};
    static const QStringList erros = {"Erro no cadastro do favorecido.",
                                      "Erro na exclusão do favorecido.",
                                      "Erro na alteração da moeda."};
    if (Operacao < 1 || Operacao > 3 || !s.Impressora) return;
    const QString titulo = titulos[Operacao - 1];
    Vexa32 &imp = *s.Impressora;
    if (imp.IniciaPorta(s.PortaImpressora) == 0) {
        d.MsgBox("Erro de comunicação com a impressora.", Botoes::OK, titulo, Icone::Critico);
        return;
    }
    qint16 r = 0;
    if (Operacao == 1) {
        r = imp.IncluiFavorecido(p.Codigo, p.Texto);
    } else if (Operacao == 2) {
        r = imp.ExcluiFavorecido(p.Codigo);
    } else {
        // An empty name empties the key: an empty value would only read it.
        const QString sg = p.Codigo.isEmpty() ? "*%*" : p.Codigo;
        const QString pl = p.Texto.isEmpty() ? "*%*" : p.Texto;
        const bool gravouSg = LeGravaIni(s.CaminhoIni, "Sistema", "m_sg", sg) == "1";
        if (LeGravaIni(s.CaminhoIni, "Sistema", "m_pl", pl) != "1" || !gravouSg)
            AvisaIniNaoGravado(d);
        r = imp.AlteraMoeda(ConverteTexto(p.Codigo), ConverteTexto(p.Texto));
    }
    if (r == 1)
        d.MsgBox("Os dados foram enviados para a impressora.", Botoes::OK, titulo,
                 Icone::Informacao);
    else
        d.MsgBox(erros[Operacao - 1], Botoes::OK, titulo, Icone::Critico);
    imp.FechaPorta();
}

QString comando_formato_data(int Digitos) {
    return QString(QChar(0x1B)) + QChar(0xAF) + "D" + QString::number(Digitos) + "\r";
}

void envia_formato_data(Sessao &s, int Digitos) {
    if ((Digitos != 1 && Digitos != 2 && Digitos != 4) || !s.Impressora) return;
    Vexa32 &imp = *s.Impressora;
    imp.IniciaPorta(s.PortaImpressora);
    imp.ComandoTX(comando_formato_data(Digitos), 5);
    imp.FechaPorta();
    LeGravaIni(s.CaminhoIni, "Opcoes", "ConfiguraData", QString::number(Digitos));
}

bool EnviaTextoImpressora(Sessao &s, Desktop &d, const QString &Texto, qint16 Modo) {
    if (!s.Impressora) return false;
    Vexa32 &imp = *s.Impressora;
    anima(s, 1);
    if (imp.IniciaPorta(s.PortaImpressora) == 0) {
        d.MsgBox("Erro de comunicação com a impressora.", Botoes::OK, QString(), Icone::Critico);
        return false;
    }
    imp.TravaDoc(1);
    if (imp.FormataTX(ConverteTexto(Texto), Modo, 0, 0, 0, 0) != 1) {
        d.MsgBox("Erro ao enviar as informações para a impressora.", Botoes::OK, QString(),
                 Icone::Critico);
        return false;
    }
    imp.TravaDoc(0);
    imp.FechaPorta();
    anima(s, 0);
    return true;
}

qint16 ImprimeCamposExtras(Sessao &s, Desktop &d, const QStringList &TxtCpo) {
    qint16 LinhaCampo[5] = {}, ColunaCampo[5] = {};
    for (int i = 0; i <= 2; ++i) {
        LinhaCampo[i] = posicao_campo(s, QStringLiteral("Campo0%1Lin").arg(i));
        ColunaCampo[i] = posicao_campo(s, QStringLiteral("Campo0%1Col").arg(i));
    }
    const QString titulo = "Impressão do Cheque";
    for (int i = 0; i <= 2; ++i) {
        const QString texto = TxtCpo.value(i);
        if (texto.isEmpty()) continue;
        if (LinhaCampo[i] == -2 || ColunaCampo[i] == -2) {
            d.MsgBox("Valores de posição não cadastrados na impressão do campo" + str_vb(i + 1) +
                         "!\n",
                     Botoes::OK, titulo);
            return -4;
        }
        if (texto.size() + ColunaCampo[i] + 1 > 120 || LinhaCampo[i] > 20) {
            d.MsgBox("Valores de posição incorretos na impressão do campo" + str_vb(i + 1) +
                         "!\nLinha =" + str_vb(LinhaCampo[i]) +
                         " e Coluna = " + str_vb(ColunaCampo[i]) + " + texto de tamanho " +
                         str_vb(texto.size()) + "!",
                     Botoes::OK, titulo);
            return -4;
        }
    }
    for (int i = 0; i <= 2; ++i) {
        const QString texto = TxtCpo.value(i);
        if (!texto.isEmpty() && s.Impressora)
            s.Impressora->ImprimeCampoX(qint16(i + 1), LinhaCampo[i], ColunaCampo[i], texto);
    }
    return 1;
}

QString causa_erro_cheque(const Sessao &s, qint16 Codigo) {
    // A system printer has causes of its own, and names its printer.
    if (const auto *sistema = dynamic_cast<const ImpressoraSistema *>(s.Impressora.get()))
        if (const QString motivo = sistema->Motivo(Codigo); !motivo.isEmpty()) return motivo;
    switch (Codigo) {
    case 2:
        return "A impressora não respondeu na porta " + s.PortaImpressora +
               ". Verifique o cabo e a porta em Arquivo > Configurações e tente de novo.";
    case 3:
        return "A impressora não tem o formato deste banco na memória. Grave o banco na "
               "impressora em Cadastro > Bancos e tente de novo.";
    case 4:
        return "A impressora está sem papel ou desligada. Coloque o cheque, verifique se ela "
               "está ligada e tente de novo.";
    case 5:
        return "A impressora recusou um dos campos do cheque. Confira os campos e tente de novo.";
    case 6:
        return "A impressora não conseguiu gravar na sua memória. Desligue-a, ligue-a de novo e "
               "tente outra vez.";
    default:
        return "A impressora devolveu o código " + Format(QString::number(Codigo), "000") +
               ". Verifique a impressora e o cabo e tente de novo.";
    }
}

std::optional<qint16> imprime_um_cheque(Sessao &s, Desktop &d, Medidor *Gauge,
                                        const TextosCheque &Textos, bool TestaPorta,
                                        QString *Nota) {
    if (!s.Impressora) return std::nullopt;
    // The printer can't take an empty payee or city.
    const auto para_impressora = [](const QString &texto) {
        const QString t = ConverteTexto(texto);
        return t.isEmpty() ? QStringLiteral(" ") : t;
    };
    if (Gauge) AnimaGauge(*Gauge, 1);
    Vexa32 &imp = *s.Impressora;
    if (imp.IniciaPorta(s.PortaImpressora) != 1 && TestaPorta) {
        d.MsgBox("Problemas ao se comunicar com a impressora!\r" + causa_erro_cheque(s, 2),
                 Botoes::OK, "Impressão do Cheque", Icone::Critico);
        if (Gauge) AnimaGauge(*Gauge, 0);
        return std::nullopt;
    }
    const qint16 resultado =
        imp.ImprimeCheque(Textos.Banco, Textos.Valor, para_impressora(Textos.Favorecido),
                          para_impressora(Textos.Cidade), Textos.Data, Textos.Extra);
    imp.FechaPorta();
    if (Gauge) AnimaGauge(*Gauge, 0);
    const auto *sistema = dynamic_cast<const ImpressoraSistema *>(&imp);
    if (resultado != 1)
        d.MsgBox("Problemas com a impressão do cheque.\n\n" + causa_erro_cheque(s, resultado),
                 Botoes::OK,
                 "Impressão do Cheque (" + Format(QString::number(resultado), "000") + ")",
                 Icone::Exclamacao);
    else if (sistema && sistema->ConfereNoPapel() && Nota &&
             d.MsgBox(PerguntaChequeSaiu, Botoes::YesNo, "Impressão do Cheque", Icone::Pergunta,
                      Resposta::Yes) == Resposta::No)
        *Nota = NotaChequeErrado;
    return resultado;
}

void AnimaGauge(Medidor &Gauge, qint16 Ligado) {
    // Off, the gauge goes back to rest, so that a finished print doesn't look under way.
    if (Ligado == 0) {
        Gauge.Value = 0;
        Gauge.ForeColor = SemCor;
        return;
    }
    Gauge.ForeColor = 65280;
    for (int i = 1; i <= 100; ++i) {
        Gauge.Value = i;
        if (i > 60 && i < 80) Gauge.ForeColor = 65535;
        if (i > 80) Gauge.ForeColor = 255;
    }
}

void MontaExtenso(Sessao &s, Desktop &d, const QString &Valor) {
    if (!s.Impressora) return;
    const QString valor = apara(Valor);
    // Typed amounts are Brazilian ("1.234,50"); the mask takes the number in invariant form.
    const std::optional<qint64> cents = centavos(valor);
    s.ValorExtenso = cents ? formata_centavos(*cents, "####0.00") : Format(valor, "####0.00");
    const qint16 r = s.Impressora->MontaValor(s.ValorExtenso, "real", "reais");
    if (r == 1) {
        d.MsgBox("ERRO NOS VALORES PASSADOS");
        return;
    }
    QFile arquivo(s.CaminhoApp + "/Extenso.ret");
    if (r == 2 || !arquivo.open(QIODevice::ReadOnly)) {
        d.MsgBox("Não foi possível abrir o arquivo");
        return;
    }
    s.ValorExtenso = apara(de_ansi(arquivo.readAll()));
}

std::unique_ptr<Vexa32> cria_impressora(Sessao &s) {
    const QString escolha = LeGravaIni(s.CaminhoIni, "Sistema", "Impressora", "").trimmed();
    if (escolha == "-2") LeGravaIni(s.CaminhoIni, "Sistema", "Impressora", "Simulador");
    if (escolha.compare("Sistema", Qt::CaseInsensitive) == 0)
        return std::make_unique<ImpressoraSistema>(s.CaminhoApp, s.CaminhoIni);
    if (escolha.compare("Nativo", Qt::CaseInsensitive) == 0) {
        // The library writes Extenso.ret in the current folder; MontaExtenso reads it from the
        // data folder.
        QDir::setCurrent(s.CaminhoApp);
        // Beside the program first, then wherever the system looks for libraries.
        if (QCoreApplication::instance()) {
            auto junto = std::make_unique<Nativo>(QCoreApplication::applicationDirPath());
            if (junto->Carregada()) return junto;
        }
        return std::make_unique<Nativo>();
    }
    return std::make_unique<Simulador>(s.CaminhoApp);
}

} // namespace vexa
