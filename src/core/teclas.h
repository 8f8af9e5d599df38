#pragma once
// The classic key codes the screens' key handlers receive (the binder turns Qt's keys into
// these), by name.
namespace vexa::tecla {

constexpr int Backspace = 8;
constexpr int Enter = 13;
constexpr int Esc = 27;
constexpr int Espaco = 32;
constexpr int PageUp = 33;
constexpr int PageDown = 34;
constexpr int End = 35;
constexpr int Home = 36;
constexpr int Esquerda = 37;
constexpr int Acima = 38;
constexpr int Direita = 39;
constexpr int Abaixo = 40;
constexpr int Insert = 45;
constexpr int Delete = 46;
constexpr int F1 = 112;
constexpr int F3 = 114;
constexpr int F4 = 115;
constexpr int F8 = 119;
constexpr int F12 = 123;

} // namespace vexa::tecla
