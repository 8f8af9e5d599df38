#include "printer/cheque_sistema.h"

#include "core/ini.h"

#include <cmath>

namespace vexa {

namespace {

// The font's proportions to its size (an em): a monospaced character is 0.6 em wide, and its
// letters reach 0.95 em above the baseline and 0.25 em below it at most.
constexpr double Avanco = 0.6, Subida = 0.95, Descida = 0.25;

// A4 text pages: a 10 mm margin, and 66 lines of 80 columns unless a line is wider.
constexpr double MargemA4 = 10.0;
constexpr int LinhasA4 = 66, ColunasA4 = 80;

double numero(const QString &CaminhoIni, const QString &chave, double padrao) {
    const QString v = LeGravaIni(CaminhoIni, "ChequeSistema", chave, "");
    bool ok = false;
    const double d = QString(v).replace(u',', u'.').trimmed().toDouble(&ok);
    return ok && v != "-2" && std::isfinite(d) ? d : padrao;
}

PaginaSistema pagina_vazia(const ConfiguracaoSistema &c) {
    PaginaSistema p;
    if (c.TipoFolha == Folha::A4) {
        p.Largura = LarguraA4;
        p.Altura = AlturaA4;
    }
    p.Passo = c.PassoColuna;
    p.EscalaX = c.Ajuste.EscalaX;
    p.EscalaY = c.Ajuste.EscalaY;
    p.Cheque = QRectF(folha_x(c, 0), folha_y(c, 0), LarguraCheque * c.Ajuste.EscalaX,
                      AlturaCheque * c.Ajuste.EscalaY);
    return p;
}

void escreve_na_grade(const ConfiguracaoSistema &c, PaginaSistema &p, int linha, int coluna,
                      const QString &texto) {
    p.Escritos.append({folha_x(c, c.OrigemX + (coluna - 1) * c.PassoColuna),
                       folha_y(c, c.OrigemY + (linha - 1) * c.PassoLinha), texto});
}

void traco(const ConfiguracaoSistema &c, PaginaSistema &p, double x1, double y1, double x2,
           double y2) {
    p.Tracos.append({folha_x(c, x1), folha_y(c, y1), folha_x(c, x2), folha_y(c, y2)});
}

} // namespace

QString chave_calibracao(const QString &impressora) {
    QString chave = impressora.trimmed();
    for (QChar &ch : chave)
        if (ch == u'=' || ch == u';' || ch == u'[' || ch == u']') ch = u'_';
    return chave.isEmpty() ? QStringLiteral("(padrao)") : chave;
}

QString texto_calibracao(const Calibracao &c) {
    return QStringLiteral("%1;%2;%3;%4")
        .arg(c.DeslocX, 0, 'f', 2)
        .arg(c.DeslocY, 0, 'f', 2)
        .arg(c.EscalaX, 0, 'f', 4)
        .arg(c.EscalaY, 0, 'f', 4);
}

Calibracao calibracao_do_texto(const QString &texto) {
    Calibracao c;
    const QStringList v = texto.split(u';');
    if (v.size() != 4) return c;
    double d[4];
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        d[i] = QString(v[i]).replace(u',', u'.').trimmed().toDouble(&ok);
        if (!ok || !std::isfinite(d[i])) return c;
    }
    // A stretch beyond a tenth is a misreading, not a printer.
    if (d[2] < 0.9 || d[2] > 1.1 || d[3] < 0.9 || d[3] > 1.1) return c;
    return {d[0], d[1], d[2], d[3]};
}

ConfiguracaoSistema le_configuracao_sistema(const QString &CaminhoIni) {
    ConfiguracaoSistema c;
    const QString nome = LeGravaIni(CaminhoIni, "Sistema", "ImpressoraSistema", "");
    c.Impressora = nome == "-2" ? QString() : nome.trimmed();
    c.TipoFolha = LeGravaIni(CaminhoIni, "ChequeSistema", "Folha", "")
                              .trimmed()
                              .compare("A4", Qt::CaseInsensitive) == 0
                      ? Folha::A4
                      : Folha::Cheque;
    c.FolhaX = numero(CaminhoIni, "FolhaX", c.FolhaX);
    c.FolhaY = numero(CaminhoIni, "FolhaY", c.FolhaY);
    c.OrigemX = numero(CaminhoIni, "OrigemX", c.OrigemX);
    c.OrigemY = numero(CaminhoIni, "OrigemY", c.OrigemY);
    const double passoC = numero(CaminhoIni, "PassoColuna", c.PassoColuna);
    const double passoL = numero(CaminhoIni, "PassoLinha", c.PassoLinha);
    if (passoC > 0.5 && passoC < 5) c.PassoColuna = passoC;
    if (passoL > 1 && passoL < 10) c.PassoLinha = passoL;
    c.Previa = LeGravaIni(CaminhoIni, "ChequeSistema", "Previa", "").trimmed() != "0";
    c.Ajuste = calibracao_do_texto(
        LeGravaIni(CaminhoIni, "Calibracao", chave_calibracao(c.Impressora), ""));
    return c;
}

double folha_x(const ConfiguracaoSistema &c, double x) {
    return (c.TipoFolha == Folha::A4 ? c.FolhaX : 0) + c.Ajuste.DeslocX + x * c.Ajuste.EscalaX;
}

double folha_y(const ConfiguracaoSistema &c, double y) {
    return (c.TipoFolha == Folha::A4 ? c.FolhaY : 0) + c.Ajuste.DeslocY + y * c.Ajuste.EscalaY;
}

FaceSistema compoe_face_sistema(const ConfiguracaoSistema &c, const QList<CampoFace> &campos) {
    FaceSistema face;
    face.Pagina = pagina_vazia(c);
    const double em = c.PassoColuna / Avanco;
    for (const CampoFace &campo : campos) {
        if (campo.Texto.trimmed().isEmpty()) continue;
        // Measured on the cheque itself: the calibration moves the paper, not the band.
        const double base = c.OrigemY + (campo.Linha - 1) * c.PassoLinha;
        if (base + Descida * em > LimiteImpressao || base - Subida * em < 0 || campo.Coluna < 1) {
            face.Recusado = campo.Nome;
            face.LinhaRecusada = campo.Linha;
            face.Pagina.Escritos.clear();
            return face;
        }
        escreve_na_grade(c, face.Pagina, campo.Linha, campo.Coluna, campo.Texto);
    }
    return face;
}

QList<PaginaSistema> paginas_texto_sistema(const ConfiguracaoSistema &c, const QStringList &linhas,
                                           Formulario formulario) {
    qsizetype total = linhas.size();
    while (total > 0 && linhas[total - 1].trimmed().isEmpty())
        --total;
    int largura = 0;
    for (qsizetype i = 0; i < total; ++i)
        largura = qMax(largura, int(linhas[i].size()));

    const bool grade = formulario == Formulario::Cheque || c.TipoFolha == Folha::Cheque;
    // On the cheque's grid: the lines above the band. On A4: the page within its margins.
    const int porPagina = grade ? int((LimiteImpressao - c.OrigemY) / c.PassoLinha) + 1 : LinhasA4;
    QList<PaginaSistema> paginas;
    for (qsizetype inicio = 0; inicio == 0 || inicio < total; inicio += porPagina) {
        PaginaSistema p = pagina_vazia(c);
        if (grade) {
            const double util = LarguraCheque - 2 * c.OrigemX;
            p.Passo = qMin(c.PassoColuna, util / qMax(1, largura));
            for (qsizetype i = inicio; i < qMin(total, inicio + porPagina); ++i)
                p.Escritos.append({folha_x(c, c.OrigemX),
                                   folha_y(c, c.OrigemY + (i - inicio) * c.PassoLinha), linhas[i]});
        } else {
            const double util = LarguraA4 - 2 * MargemA4;
            const double passoLinha = (AlturaA4 - 2 * MargemA4) / LinhasA4;
            p.Passo = util / qMax(ColunasA4, largura);
            p.EscalaX = p.EscalaY = 1;
            for (qsizetype i = inicio; i < qMin(total, inicio + porPagina); ++i)
                p.Escritos.append(
                    {MargemA4, MargemA4 + (i - inicio + 0.8) * passoLinha, linhas[i]});
        }
        paginas.append(p);
    }
    return paginas;
}

PaginaSistema pagina_calibracao(const ConfiguracaoSistema &c) {
    PaginaSistema p = pagina_vazia(c);
    p.Passo = 1.5;
    // The outline of the cheque, and the top of its magnetic band.
    traco(c, p, 0, 0, LarguraCheque, 0);
    traco(c, p, LarguraCheque, 0, LarguraCheque, AlturaCheque);
    traco(c, p, LarguraCheque, AlturaCheque, 0, AlturaCheque);
    traco(c, p, 0, AlturaCheque, 0, 0);
    traco(c, p, 0, LimiteImpressao, LarguraCheque, LimiteImpressao);
    // Rulers along the top and left edges, inside the cheque: a tick a millimetre, longer at
    // five, longer still and numbered at ten.
    const auto tamanho = [](int mm) { return mm % 10 == 0 ? 4.0 : mm % 5 == 0 ? 2.5 : 1.5; };
    for (int x = 1; x < LarguraCheque; ++x) {
        traco(c, p, x, 0, x, tamanho(x));
        if (x % 10 == 0)
            p.Escritos.append({folha_x(c, x - 1.5), folha_y(c, 7.0), QString::number(x)});
    }
    for (int y = 1; y < AlturaCheque; ++y) {
        traco(c, p, 0, y, tamanho(y), y);
        if (y % 10 == 0)
            p.Escritos.append({folha_x(c, 5.0), folha_y(c, y + 0.8), QString::number(y)});
    }
    // A cross at the baseline of line 1, column 1.
    traco(c, p, c.OrigemX - 3, c.OrigemY, c.OrigemX + 3, c.OrigemY);
    traco(c, p, c.OrigemX, c.OrigemY - 3, c.OrigemX, c.OrigemY + 3);
    p.Escritos.append(
        {folha_x(c, 40), folha_y(c, 40),
         "Calibração: " + (c.Impressora.isEmpty() ? "impressora padrão" : c.Impressora)});
    p.Escritos.append(
        {folha_x(c, 40), folha_y(c, 45), "Deslocamento " + texto_calibracao(c.Ajuste)});
    p.Escritos.append({folha_x(c, 40), folha_y(c, 61), "Faixa magnética: nada abaixo desta linha"});
    return p;
}

} // namespace vexa
