// Experiments of Malcolm and of Gentleman-Marovich behind the machine constants,
// written once for both working precisions (X02MDC1-6, X02RMDC, X02IMDC bodies).
#pragma once

#include "core/console_layer.h"

#include <cmath>
#include <limits>
#include <string_view>

namespace x02 {

// Texts and the adder of one working precision.
template <class T>
struct Precision;

template <>
struct Precision<double> {
    static double add(double a, double b);  // calls X02ADD through a pointer
    static constexpr std::string_view unknownArithmetic =
        " X02MDC1 --W- Unknown float-point arithmetic.";
    static constexpr std::string_view eminDoubtful =
        "X02MDC3 --W- Minimum exponent value may be incorrect!";
    static constexpr std::string_view noGammaMin =
        "X02MDC6 --E- Unable to find minimum argument of Gamma function.";
    static constexpr std::string_view noGammaMax =
        "X02MDC6 --E- Unable to find maximum argument of Gamma function.";
    static constexpr std::string_view wrongRealCode = "X02RMDC --E- Wrong action code.";
    static constexpr std::string_view wrongIntCode = "X02IMDC --E- Wrong argument value.";
};

template <>
struct Precision<float> {
    static float add(float a, float b);  // calls X02ADDS through a pointer
    static constexpr std::string_view unknownArithmetic =
        " X02MDCS1 -W- Unknown float-point arithmetic.";
    static constexpr std::string_view eminDoubtful =
        "X02MDCS1 -W- Minimum exponent value may be incorrect!";
    static constexpr std::string_view noGammaMin =
        "X02MDCS6 -E- Unable to find minimum argument of Gamma function.";
    static constexpr std::string_view noGammaMax =
        "X02MDCS6 -E- Unable to find maximum argument of Gamma function.";
    static constexpr std::string_view wrongRealCode = "X02RMDCS -E- Wrong action code.";
    static constexpr std::string_view wrongIntCode = "X02IMDC --E- Wrong argument value.";
};

template <class T>
T add(T a, T b) {
    return Precision<T>::add(a, b);
}

// Writes the stop text and ends the program (failure of the Gamma bounds).
[[noreturn]] void fatalStop();

// Everything one precision measures, each part behind its own first-call flag.
template <class T>
struct Cache {
    bool haveBase = false;  // X02MDC2
    int beta = 0, t = 0;
    bool rnd = false, ieee = false;

    bool haveMain = false;  // X02MDC1
    T eps = 0, rMin = 0, rMax = 0, rBig = 0;
    int nDigits = 0;

    bool haveGamma = false;  // X02MDC6
    T gMin = 0, gMax = 0;

    bool haveReal = false;  // X02RMDC
    T real[10] = {};

    bool haveInt = false;  // X02IMDC
    int integer[19] = {};

};

// ---- base experiment -------------------------------------------------------

// Doubles a from 1 until (a + 1) - a no longer gives 1: a is then the first
// power of two whose unit is lost.
template <class T>
T firstLostUnit() {
    const T one = 1;
    T a = one;
    T c = one;
    while (c == one) {
        a = add(a, a);
        c = add(add(a, one), -a);
    }
    return a;
}

template <class T>
void baseExperiment(int& beta, int& t, bool& rnd, bool& ieee) {
    const T one = 1;
    T a = firstLostUnit<T>();
    T b = one;
    T c = add(a, b);
    while (c == a) {
        b = add(b, b);
        c = add(a, b);
    }
    const T savedC = c;
    beta = static_cast<int>(add(add(c, -a), T(0.25)));

    b = static_cast<T>(beta);
    rnd = add(a, add(b / 2, -b / 100)) == a && add(a, add(b / 2, b / 100)) != a;
    ieee = rnd && add(a, b / 2) == a && add(savedC, b / 2) > savedC;

    t = 0;
    a = one;
    c = one;
    while (c == one) {
        a = add(a * b, T(0));
        ++t;
        c = add(add(a, one), -a);
    }
}

// ---- exponent range --------------------------------------------------------

template <class T>
void underflowProbe(int& emin, T start, int beta) {
    const T zero = 0;
    const T base = static_cast<T>(beta);
    const T rbase = T(1) / base;
    emin = 1;
    T a = start;
    T b1 = add(a / base, zero);
    T c1 = a, c2 = a, d1 = a, d2 = a;
    while (c1 == a && c2 == a && d1 == a && d2 == a) {
        --emin;
        a = b1;
        b1 = add(a / base, zero);
        c1 = add(b1 * base, zero);
        d1 = zero;
        for (int i = 0; i < beta; ++i) d1 = add(d1, b1);
        const T b2 = add(a * rbase, zero);
        c2 = add(b2 / rbase, zero);
        d2 = zero;
        for (int i = 0; i < beta; ++i) d2 = add(d2, b2);
    }
}

inline int least(int a, int b) { return a < b ? a : b; }
inline int most(int a, int b) { return a > b ? a : b; }
inline int absInt(int a) { return a < 0 ? -a : a; }

// Decides the minimum exponent from the four probes; `doubtful` is set when
// they fit none of the known patterns.
inline int decideMinExponent(int nPos, int nNeg, int gPos, int gNeg, int t, bool& ieee,
                             bool& doubtful) {
    ieee = false;
    doubtful = false;
    if (nPos == nNeg && gPos == gNeg) {
        if (nPos == gPos) return nPos;
        if (gPos - nPos == 3) {
            ieee = true;
            return nPos - 1 + t;
        }
        doubtful = true;
        return least(nPos, gPos);
    }
    if (nPos == gPos && nNeg == gNeg) {
        if (absInt(nPos - nNeg) == 1) return most(nPos, nNeg);
        doubtful = true;
        return least(nPos, nNeg);
    }
    if (absInt(nPos - nNeg) == 1 && gPos == gNeg) {
        if (gPos - least(nPos, nNeg) == 3) return most(nPos, nNeg) - 1 + t;
        doubtful = true;
        return least(nPos, nNeg);
    }
    doubtful = true;
    return least(least(nPos, nNeg), least(gPos, gNeg));
}

template <class T>
void minExponent(int& emin, T& rMin, bool& ieee, int beta, int t) {
    const T zero = 0;
    const T one = 1;
    const T base = static_cast<T>(beta);
    T small = one;
    for (int i = 0; i < 3; ++i) small = add(small / base, zero);
    const T a = add(one, small);

    int nPos = 0, nNeg = 0, gPos = 0, gNeg = 0;
    underflowProbe<T>(nPos, one, beta);
    underflowProbe<T>(nNeg, -one, beta);
    underflowProbe<T>(gPos, a, beta);
    underflowProbe<T>(gNeg, -a, beta);

    bool doubtful = false;
    emin = decideMinExponent(nPos, nNeg, gPos, gNeg, t, ieee, doubtful);
    if (doubtful) I05MES(Precision<T>::eminDoubtful);

    rMin = one;
    for (int i = 0; i < 1 - emin; ++i) rMin = add(rMin / base, zero);
}

// The exponent bits and the first bound of the maximum exponent.
inline int exponentBound(int& exbits, int beta, int emin) {
    int lexp = 1;
    exbits = 1;
    while (lexp * beta <= -emin) {
        lexp *= beta;
        ++exbits;
    }
    int uexp = lexp;
    if (lexp != -emin) {
        uexp = lexp * beta;
        ++exbits;
    }
    const int expsum = (uexp + emin > -lexp - emin) ? 2 * lexp : 2 * uexp;
    return expsum + emin - 1;
}

template <class T>
void maxExponent(int& emax, T& rMax, int& exbits, int beta, int t, int emin, bool ieee) {
    int e = exponentBound(exbits, beta, emin);
    if ((1 + exbits + t) % 2 == 1 && beta == 2) --e;
    if (ieee) --e;

    // y = 1 - beta^-t as the sum of (beta - 1)/beta^i.
    const T one = 1;
    const T zero = 0;
    const T base = static_cast<T>(beta);
    const T recbas = one / base;
    T z = base - one;
    T y = zero;
    T oldy = zero;
    for (int i = 1; i <= t; ++i) {
        z = z * recbas;
        if (y < one) oldy = y;
        y = add(y, z);
    }
    if (y >= one) y = oldy;

    for (int i = 0; i < e; ++i) y = add(y * base, zero);
    rMax = y;
    emax = e - 1;
}

// ---- main constants --------------------------------------------------------

// beta^n by repeated products, each rounded through the adder.
template <class T>
T powerOfBase(int beta, int n) {
    T p = 1;
    for (int i = 0; i < n; ++i) p = add(p * static_cast<T>(beta), T(0));
    return p;
}

// The relative spacing by the rounding experiment of Malcolm.
template <class T>
T relativeSpacing(T a) {
    const T half = T(1) / 2;
    T b = T(2) / 3;
    const T sixth = add(b, -half);
    const T third = add(sixth, sixth);
    b = std::abs(add(add(third, -half), sixth));
    if (b < a) b = a;

    T eps = 1;
    while (eps > b && b > 0) {
        eps = b;
        T c = add(half * eps, T(32) * eps * eps);
        c = add(half, -c);
        b = add(half, c);
        c = add(half, -b);
        b = add(half, c);
    }
    if (a < eps) eps = a;
    while (add(add(T(1), eps), T(-1)) == 0) eps = add(eps, eps);
    return eps;
}

template <class T>
bool reciprocalSurvives(T x) {
    return std::exp(std::log(T(1) / x)) != 0;
}

// Largest number whose reciprocal survives exp(ln(1/x)).
template <class T>
T largestInvertible(T eps, T rMin, T rMax, int beta, int emax) {
    const T z = powerOfBase<T>(beta, (emax - 1) / 2);
    T rBig = (T(1) / (z * rMin) < rMax / z) ? T(1) / rMin : rMax;
    if (reciprocalSurvives(rBig)) return rBig;

    T hi = rBig;
    while (!reciprocalSurvives(rBig)) {
        hi = rBig;
        rBig = rBig / 2;
    }
    for (;;) {
        const T m = (rBig + hi) / 2;
        if (m - rBig <= eps * m) break;
        if (reciprocalSurvives(m))
            rBig = m;
        else
            hi = m;
    }
    return rBig;
}

template <class T>
void mainConstants(Cache<T>& k, bool ieeeOfBase) {
    const int beta = k.beta;
    const T a = T(1) / powerOfBase<T>(beta, k.t - 1);
    T eps = relativeSpacing(a);
    const T ratio = eps / a;
    const T beta2 = static_cast<T>(beta * beta);
    if (ratio > beta2 || ratio < T(1) / beta2) {
        I05MES(Precision<T>::unknownArithmetic);
        eps = a;
    }
    k.eps = eps;
    k.nDigits = static_cast<int>(std::abs(std::log10(eps)) + T(0.5));

    int emin = 0, emax = 0, exbits = 0;
    bool ieeeOfProbes = false;
    minExponent<T>(emin, k.rMin, ieeeOfProbes, beta, k.t);
    maxExponent<T>(emax, k.rMax, exbits, beta, k.t, emin, ieeeOfBase || ieeeOfProbes);
    k.rBig = largestInvertible<T>(eps, k.rMin, k.rMax, beta, emax);
}

// ---- Gamma bounds ----------------------------------------------------------

// Newton steps on f(x) = 0 with the step x*f(x)/g(x); false when 10 steps
// do not bring the step below 0.005.
template <class T, class Step>
bool newton(T& x, Step step) {
    for (int i = 0; i < 10; ++i) {
        const T s = step(x);
        x = x - s;
        if (std::abs(s) < T(0.005)) return true;
    }
    return false;
}

template <class T>
int gammaBounds(T& gMin, T& gMax, T rMin, T rMax) {
    const T half = T(0.5);
    const T lnMin = std::log(rMin);
    T x = -lnMin;
    const bool lowFound = newton(x, [&](T v) {
        return v * ((v + half) * std::log(v) - v - T(0.2258) + lnMin) / (v * std::log(v) + half);
    });
    if (!lowFound) {
        I05MES(Precision<T>::noGammaMin);
        return -1;
    }
    gMin = T(0.01) - x;

    const T lnMax = std::log(rMax);
    x = lnMax;
    const bool highFound = newton(x, [&](T v) {
        return v * ((v - half) * std::log(v) - v + T(0.9189) - lnMax) / (v * std::log(v) - half);
    });
    if (!highFound) {
        I05MES(Precision<T>::noGammaMax);
        return -2;
    }
    gMax = x - T(0.01);
    if (gMin < T(1) - gMax) gMin = T(1) - gMax;
    return 0;
}

// ---- the routines with their first-call flags --------------------------------

template <class T>
void baseSet(Cache<T>& k, int& beta, int& t, bool& rnd, bool& ieee) {
    if (!k.haveBase) {
        baseExperiment<T>(k.beta, k.t, k.rnd, k.ieee);
        k.haveBase = true;
    }
    beta = k.beta;
    t = k.t;
    rnd = k.rnd;
    ieee = k.ieee;
}

template <class T>
void mainSet(Cache<T>& k, T& eps, T& rMin, T& rMax, T& rBig, int& nDigits) {
    if (!k.haveMain) {
        int beta = 0, t = 0;
        bool rnd = false, ieee = false;
        baseSet<T>(k, beta, t, rnd, ieee);
        mainConstants<T>(k, ieee);
        k.haveMain = true;
    }
    eps = k.eps;
    rMin = k.rMin;
    rMax = k.rMax;
    rBig = k.rBig;
    nDigits = k.nDigits;
}

template <class T>
void gammaSet(Cache<T>& k, T& gMin, T& gMax, int& err) {
    if (!k.haveGamma) {
        T eps, rMin, rMax, rBig;
        int nDigits = 0;
        mainSet<T>(k, eps, rMin, rMax, rBig, nDigits);
        err = gammaBounds<T>(k.gMin, k.gMax, rMin, rMax);
        if (err != 0) fatalStop();
        k.haveGamma = true;
    }
    gMin = k.gMin;
    gMax = k.gMax;
    err = 0;
}

template <class T>
T realConstant(Cache<T>& k, int code) {
    if (!k.haveReal) {
        T eps, rMin, rMax, rBig, gMin, gMax;
        int nDigits = 0, beta = 0, t = 0, err = 0;
        bool rnd = false, ieee = false;
        mainSet<T>(k, eps, rMin, rMax, rBig, nDigits);
        baseSet<T>(k, beta, t, rnd, ieee);
        gammaSet<T>(k, gMin, gMax, err);
        T eps1 = eps / static_cast<T>(beta);
        if (add(T(1), -eps1) == T(1)) eps1 = eps;
        const T values[10] = {0, eps1, eps, rMin, rMax, rBig,
                              gMin, gMax, std::log(rBig), std::log10(rBig)};
        for (int i = 0; i < 10; ++i) k.real[i] = values[i];
        k.haveReal = true;
    }
    if (code < 1 || code > 9) {
        I05MES(Precision<T>::wrongRealCode);
        return k.real[2];
    }
    return k.real[code];
}

// Largest n whose factorial, formed as a running product, stays at most limit.
template <class T>
int largestFactorialBelow(T limit) {
    T product = 1;
    int n = 1;
    while (product * static_cast<T>(n + 1) <= limit) {
        ++n;
        product = product * static_cast<T>(n);
    }
    return n;
}

template <class T>
void integerTable(Cache<T>& k) {
    T eps, rMin, rMax, rBig, gMin, gMax;
    int nDigits = 0, beta = 0, t = 0, err = 0, emin = 0, emax = 0, exbits = 0;
    bool rnd = false, ieeeBase = false, ieeeProbes = false;
    mainSet<T>(k, eps, rMin, rMax, rBig, nDigits);
    baseSet<T>(k, beta, t, rnd, ieeeBase);
    minExponent<T>(emin, rMin, ieeeProbes, beta, t);
    maxExponent<T>(emax, rMax, exbits, beta, t, emin, ieeeBase || ieeeProbes);
    gammaSet<T>(k, gMin, gMax, err);

    const int largest = std::numeric_limits<int>::max();
    int* v = k.integer;
    v[1] = beta;
    v[2] = t;
    v[3] = exbits;
    v[4] = nDigits;
    v[5] = emin;
    v[6] = emax;
    v[7] = static_cast<int>(std::log(rMin));
    v[8] = static_cast<int>(std::log(rMax));
    v[9] = static_cast<int>(std::log10(rMin));
    v[10] = static_cast<int>(std::log10(rMax));
    v[11] = 0;
    v[12] = largest;
    v[13] = static_cast<int>(std::log10(static_cast<T>(largest))) + 1;
    v[14] = 0;
    for (int n = largest; n > 0; n /= beta) ++v[14];
    v[15] = 1;
    for (int n = largest; n > 0; n /= 2) ++v[15];
    v[16] = static_cast<int>(gMax) - 1;
    v[17] = largestFactorialBelow<T>(powerOfBase<T>(10, nDigits) - T(1));
    v[18] = largestFactorialBelow<T>(static_cast<T>(largest));
}

template <class T>
int integerConstant(Cache<T>& k, int code) {
    if (!k.haveInt) {
        integerTable<T>(k);
        k.haveInt = true;
    }
    if (code < 1 || code > 18 || code == 11) {
        I05MES(Precision<T>::wrongIntCode);
        return 0;
    }
    return k.integer[code];
}

}  // namespace x02
