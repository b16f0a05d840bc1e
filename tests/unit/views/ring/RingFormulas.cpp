#include "unit/views/ring/RingFormulas.h"

#include <cmath>
#include <functional>
#include <map>

namespace quorvin::testing {

namespace {

using std::cos;
using std::pow;
using std::sin;
using Kind = RingShape::Kind;

constexpr double pi = 3.14159265358979323846;

/// The names are those of the formulas: t the time, s and p the smooth and the peak level, b the
/// breath, m the smaller side.
class Formulas {
public:
    Formulas(const RingFrame& frame, bool isGlow)
        : rec(frame.mode == RingMode::recording)
        , trans(frame.mode == RingMode::transcribing)
        , glow(isGlow)
        , mode(frame.mode)
        , t(frame.time)
        , s(frame.smoothLevel)
        , p(frame.peakLevel)
        , b(frame.breathPhase)
        , cx(frame.size.width() / 2)
        , cy(frame.size.height() / 2)
        , m(frame.size.width() < frame.size.height() ? frame.size.width() : frame.size.height()) {}

    void wave();
    void pulse();
    void comet();
    void bars();
    void orbit();
    void nova();
    void dna();
    void plasma();
    void radar();

    std::vector<FormulaShape> shapes;

private:
    [[nodiscard]] QPointF point(double angle, double radius) const {
        return {cx + radius * cos(angle), cy + radius * sin(angle)};
    }
    [[nodiscard]] RingColor color(double lineT, double angle) const {
        return colorByFormula(mode, lineT + angle);
    }
    void disc(const QPointF& at, double radius, const RingColor& ink, double opacity) {
        shapes.push_back({Kind::filledCircle, {at}, radius, 0, opacity, ink});
    }
    void circle(double radius, const RingColor& ink, double opacity, double width) {
        shapes.push_back({Kind::strokedCircle, {{cx, cy}}, radius, width, opacity, ink});
    }
    void line(const QPointF& from, const QPointF& to, const RingColor& ink, double opacity,
              double width) {
        shapes.push_back({Kind::segment, {from, to}, 0, width, opacity, ink});
    }
    void path(int segments, const std::function<double(double)>& radiusAt, const RingColor& ink,
              double opacity, double width) {
        FormulaShape shape{Kind::closedPath, {}, 0, width, opacity, ink};
        for (int j = 0; j <= segments; ++j) {
            const double theta = 2 * pi * j / segments;
            shape.points.push_back(point(theta, radiusAt(theta)));
        }
        shapes.push_back(shape);
    }

    void helix(double offset, double colorOffset, bool isFirst);

    bool rec;
    bool trans;
    bool glow;
    RingMode mode;
    double t, s, p, b, cx, cy, m;
};

void Formulas::wave() {
    double A = sin(b) * 0.5 + 0.5 + 0.6 + 2 * s;
    double v = 0.12;
    if (rec) {
        A = 2 * p + std::sqrt(s > 0.01 ? s : 0.01) * 6 + 1.2;
        v = s * 0.25 + 0.4;
    } else if (trans) {
        A = sin(0.7 * t) * 2.5 + 5;
        v = 0.9;
    }
    const double T = t * v;
    for (int i = 0; i < 28; ++i) {
        const double f = i / 28.0;
        const double phi = 0.6 * pi * f;
        const auto ripple = [phi, T](double th) {
            return 0.35 * sin(phi + 1.8 * T + 5 * th) + 0.25 * sin(1.3 * phi + 8 * th - 1.3 * T) +
                   0.18 * sin(0.7 * phi + 2.2 * T + 12 * th) +
                   0.30 * sin(2 * phi + 3 * th - 0.7 * T) +
                   0.20 * cos(1.5 * phi + 1.5 * T + 7 * th) +
                   0.12 * sin(0.4 * phi + 15 * th - 2.8 * T) + 0.15 * cos(0.9 * phi + T + 10 * th) +
                   0.08 * sin(1.7 * phi + 18 * th - 3 * T);
        };
        const double e = 1 - 2 * std::fabs(f - 0.5);
        double opacity = e * 0.55 + 0.15;
        if (rec) {
            opacity += 0.3 * s;
        }
        path(
            256, [&](double th) { return m / 2 - 20 - 11 + 22 * f + A * ripple(th); },
            color(f, 0.1 * t), opacity > 1 ? 1 : opacity, glow ? 2 : e + 0.6);
    }
}

void Formulas::pulse() {
    int n = static_cast<int>(5 * s) + 7;
    n = n > 12 ? 12 : n;
    const double c = rec ? 0.14 : trans ? 0.08 : 0.04;
    for (int i = 0; i < n; ++i) {
        const double g = double(i) / n;
        double whole = 0;
        const double life = 1 - std::modf(t * (c + 0.12 * s) + g, &whole);
        const double opacity = pow(life, 1.3) * (rec ? 0.3 * s + 0.55 : 0.55) * (glow ? 0.65 : 1.0);
        if (opacity < 0.01) {
            continue;
        }
        double radius = (m / 2 - 12) * (1 - pow(life, 2.2));
        if (rec) {
            radius += life * 18 * s;
        }
        const double width = glow ? life * 5 + 1.5 : life * 3 + 0.5;
        if (rec && s > 0.1) {
            path(
                64, [&](double th) { return radius + 10 * s * sin(2 * g + 3 * t + 4 * th); },
                color(g, 0.04 * t), opacity, width);
        } else {
            circle(radius, color(g, 0.04 * t), opacity, width);
        }
    }
}

void Formulas::comet() {
    const double offsets[] = {0, -10, 7};
    const double speeds[3][3] = {
        {0.15 * s + 0.3, 0.22, 0.11}, {0.1 * s + 0.22, 0.16, 0.08}, {0.18, 0.13, 0.06}};
    const double colors[] = {0, 0.45, 0.72};
    const int tails[3][3] = {{44, 44, 44}, {36, 36, 36}, {26, 22, 14}};
    const int column = rec ? 0 : trans ? 1 : 2;
    for (int comet = 0; comet < 3; ++comet) {
        const double speed = speeds[comet][column];
        const double position = colors[comet];
        const double B = m / 2 - 28 + offsets[comet] + (rec ? 4 * (s + 1) : trans ? 0 : 5 * sin(b));
        const int n = tails[comet][column] + (rec ? static_cast<int>(18 * s) : 0);
        for (int k = n - 1; k >= 0; --k) {
            const double frac = double(k) / n;
            const double a = t * speed - 0.06 * k;
            const double fade = pow(1 - frac, 2.5);
            disc(point(a, B + 3 * sin(0.8 * t + 3 * a)),
                 (0.55 * sin(5 * t - 3.5 * pi * frac) + 1) * fade * (glow ? 4.5 : 2.8) + 0.2,
                 color(position, 0.04 * t + 0.1 * frac), fade * (glow ? 0.35 : 0.85));
        }
        const double h = rec ? 0.7 * s + 1 + 0.4 * p : 1;
        const double H = (glow ? 7 : 4.5) * h;
        const QPointF head = point(t * speed, B);
        disc(head, 1.8 * H, color(position, 0.04 * t), glow ? 0.15 : 0.25);
        if (!glow) {
            const double d = h * (5 * s + 1.8);
            disc({head.x() - d, head.y()}, H, {1, 0, 0}, 0.45);
            disc({head.x() + d, head.y()}, H, {0, 1, 1}, 0.45);
        }
        disc(head, H, color(position, 0.04 * t), glow ? 0.6 : 1);
    }
}

void Formulas::bars() {
    const double r = m / 2 - 45;
    circle(r, color(0.3, 0.03 * t), 0.2, 0.5);
    for (int i = 0; i < 64; ++i) {
        const double a = 2 * pi * i / 64;
        double L = (sin(b) * 0.5 + 0.5) * 4 + 3 + 2.5 * sin(0.4 * t + 3 * a) + 12 * s;
        if (rec) {
            L = 35 * s + 8 + 20 * p + 10 * s * sin(2.5 * t + 5 * a) + 6 * s * sin(11 * a - 1.8 * t);
        } else if (trans) {
            L = 5 * sin(1.5 * t + 4 * a) + 6 + 3 * sin(7 * a - 1.1 * t);
        }
        line(point(a, r), point(a, r + L), color(i / 64.0, 0.05 * t), 0.45 * s + 0.55,
             glow ? 2.5 : 1.8);
    }
}

void Formulas::orbit() {
    struct Row {
        double radius, speed;
        int dots;
        double color;
    };
    const double k = m / 2 / 140;
    const double E = 16 * s + 8 * p;
    for (const Row& row : {Row{55, 0.12, 8, 0.0}, Row{78, -0.08, 6, 0.2}, Row{100, 0.06, 10, 0.4},
                           Row{116, -0.14, 5, 0.6}, Row{132, 0.09, 7, 0.8}}) {
        const double Ro = k * (row.radius + row.radius / 132 * E);
        circle(Ro, color(row.color, 0), 0.07, 0.5);
        for (int j = 0; j < row.dots; ++j) {
            const QPointF at = point(t * row.speed + 2 * pi * j / row.dots, Ro);
            const double factor = rec ? 0.9 * s + 1 + 0.4 * p : 0.3 * sin(0.7 * j + b) + 1;
            const double D = factor * (glow ? 4 : 2.5);
            const double o = rec ? 0.4 * s + 0.6 : glow ? 0.35 : 0.65;
            disc(at, 2 * D, color(row.color, 0.04 * t + 0.05 * j), 0.2 * o);
            disc(at, D, color(row.color, 0.04 * t + 0.05 * j), o);
        }
    }
}

void Formulas::nova() {
    const double R = m / 2 - 10;
    circle(R, color(0.5, 0.02 * t), 0.12, 0.5);
    for (int i = 0; i < 24; ++i) {
        const double f = i / 24.0;
        const double a = 0.04 * t + 2 * pi * f;
        double outer = 0.3 * R * s + R * ((sin(0.7 * pi * f + b) * 0.5 + 0.5) * 0.14 + 0.28);
        double o = glow ? 0.25 : 0.15;
        double width = 1;
        if (rec) {
            outer = R * (0.5 * s + 0.5 + 0.25 * p) + 15 * s * sin(4 * t + 2 * a);
            o = 0.6 * s + 0.2;
            width = glow ? 1 : 1.5 * s + 1;
        } else if (trans) {
            outer = R * (std::fabs(sin(1.8 * t + pi * f)) * 0.22 + 0.38);
        }
        line(point(a, 8 * s + 12), point(a, outer), color(f, 0.06 * t), o, width);
        if ((rec || trans) && !glow) {
            disc(point(a, outer), 2.5 * s + 1.5, color(f, 0.06 * t), 0.8 * o);
        }
    }
}

void Formulas::dna() {
    helix(0, 0, true);
    helix(pi, 0.5, false);
}

void Formulas::helix(double offset, double colorOffset, bool isFirst) {
    const double rho = (rec ? 0.15 * s + 0.22 : trans ? 0.14 : 0.07) * t;
    const double R = m / 2 - 30;
    for (int i = 0; i < 32; ++i) {
        const double g = i / 32.0;
        const double w = 2 * rho + 4 * pi * g;
        const double d = rec ? sin(w) * (22 * s + 18) : sin(w) * (5 * sin(pi * g + b) + 12);
        const double a = offset + rho + 2 * pi * g;
        const double e = (sin(w) + 1) * 0.5;
        const double size = (0.6 * e + 0.4) * (glow ? 5 : 3) * (rec ? 0.9 * s + 1 + 0.4 * p : 1);
        const double opacity = (0.65 * e + 0.35) * (glow ? 0.4 : 0.85);
        const RingColor ink = color(colorOffset + g, 0.05 * t);
        if (glow) {
            disc(point(a, R + d), 2 * size, ink, 0.3 * opacity);
        }
        disc(point(a, R + d), size, ink, opacity);
        if (i >= 1) {
            const double before = (i - 1) / 32.0;
            const double sinBefore = sin(2 * rho + 4 * pi * before);
            const double dBefore = rec ? sinBefore * (22 * s + 18) : sinBefore * 12;
            line(point(offset + rho + 2 * pi * before, R + dBefore), point(a, R + d), ink,
                 0.4 * opacity, glow ? 1.5 : 0.8);
        }
        if (isFirst && i % 4 == 0) {
            line(point(a, R + d), point(a + pi, R - d), ink, 0.15, 0.6);
        }
    }
}

void Formulas::plasma() {
    struct Row {
        double speed, phase, fraction, color;
    };
    const double E = rec ? 1.2 * s + 1 + 0.5 * p : 1;
    const double R = m / 2 - 25;
    for (const Row& row :
         {Row{0.09, 0.0, 1.0, 0.0}, Row{-0.07, 1.2, 0.85, 0.2}, Row{0.12, 2.5, 0.92, 0.4},
          Row{-0.10, 3.8, 0.78, 0.6}, Row{0.08, 5.1, 0.95, 0.8}}) {
        const double a = row.phase + row.speed * t;
        const double Br = R * row.fraction;
        const QPointF at(cx + Br * cos(a) + 0.3 * Br * cos(0.3 * t + 2 * a),
                         cy + Br * sin(a) + 0.2 * Br * sin(3 * a - 0.2 * t));
        const double Z = (0.15 * sin(row.phase + 1.3 * b) + 1) * E * (glow ? 48 : 32);
        const double o = rec ? 0.35 * s + 0.25 : 0.18;
        for (const double l : {1.0, 0.8, 0.6, 0.4}) {
            disc(at, Z * l / 2, color(row.color, 0.04 * t), o * (1 - l) * 2.5);
        }
    }
    circle(R, color(0.5, 0.03 * t), rec ? 0.3 * s + 0.3 : 0.15, 1);
}

void Formulas::radar() {
    const double R = m / 2 - 12;
    const double A = 2 * pi * (rec ? 0.25 * s + 0.45 : trans ? 0.3 : 0.18) * t;
    const QPointF middle(cx, cy);
    circle(R, color(0.4, 0), 0.25, 1);
    circle(0.33 * R, color(0.3, 0), 0.1, 0.5);
    circle(0.66 * R, color(0.3, 0), 0.1, 0.5);
    for (int spoke = 0; spoke < 4; ++spoke) {
        line(point(spoke * pi / 2, 0.05 * R), point(spoke * pi / 2, R), color(0.3, 0), 0.08, 0.5);
    }
    for (int k = 0; k < 24; ++k) {
        const double g = k / 24.0;
        line(middle, point(A - pi / 2 * g, R), color(0.55, 0.05 * t),
             pow(1 - g, 1.8) * (rec ? 0.35 * s + 0.55 : 0.25), glow ? 3 : 1.5);
    }
    line(middle, point(A, R), color(0.6, 0.04 * t), rec ? 0.9 : 0.55, glow ? 4 : 2);
    for (int i = 0; i < 8 && (rec || trans); ++i) {
        const double g = i / 8.0;
        const double turns = (A - 2 * pi * g) / (2 * pi);
        const double I = 1 - 2 * pi * (turns - std::floor(turns)) / (2 * pi / 3);
        if (I > 0) {
            const double e = rec ? s + 0.5 * p : 0.4;
            disc(point(2 * pi * g, R * (0.7 * g + 0.3)), I * (3 * e + 2.5) * (glow ? 1.8 : 1),
                 color(g, 0.03 * t), 0.9 * I);
        }
    }
    disc(middle, glow ? 5 : 3, color(0.6, 0.04 * t), 0.8);
}

} // namespace

RingColor colorByFormula(RingMode mode, double position) {
    const double f = position - std::floor(position);
    const double third = f < 0.33 ? f / 0.33 : f < 0.66 ? (f - 0.33) / 0.33 : (f - 0.66) / 0.34;
    const double half = f < 0.5 ? 2 * f : 2 * (f - 0.5);
    switch (mode) {
    case RingMode::recording:
        return f < 0.33   ? RingColor{1, 0.2 + 0.2 * third, 0.4 + 0.2 * third}
               : f < 0.66 ? RingColor{1 - 0.2 * third, 0.4 - 0.1 * third, 0.6 + 0.2 * third}
                          : RingColor{0.8 + 0.2 * third, 0.3 - 0.1 * third, 0.8 - 0.4 * third};
    case RingMode::transcribing:
        return f < 0.5 ? RingColor{1, 0.6 + 0.2 * half, 0.1 + 0.3 * half}
                       : RingColor{1 - 0.2 * half, 0.8 - 0.2 * half, 0.4 - 0.3 * half};
    case RingMode::idle:
        break;
    }
    return f < 0.33   ? RingColor{0.02 + 0.2 * third, 0.7 - 0.3 * third, 0.95}
           : f < 0.66 ? RingColor{0.22 + 0.35 * third, 0.4 - 0.2 * third, 0.95 - 0.1 * third}
                      : RingColor{0.57 - 0.55 * third, 0.2 + 0.5 * third, 0.85 + 0.1 * third};
}

std::vector<FormulaShape> shapesByFormula(const std::string& style, const RingFrame& frame,
                                          bool isGlow) {
    static const std::map<std::string, void (Formulas::*)()> byName{
        {"wave", &Formulas::wave}, {"pulse", &Formulas::pulse},   {"comet", &Formulas::comet},
        {"bars", &Formulas::bars}, {"orbit", &Formulas::orbit},   {"nova", &Formulas::nova},
        {"dna", &Formulas::dna},   {"plasma", &Formulas::plasma}, {"radar", &Formulas::radar},
    };
    Formulas formulas(frame, isGlow);
    (formulas.*byName.at(style))();
    return formulas.shapes;
}

} // namespace quorvin::testing
