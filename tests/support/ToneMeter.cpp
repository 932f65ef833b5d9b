#include "support/ToneMeter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace kalvo::test {

namespace {

constexpr double kWindow = 0.02; ///< s
/** Each tone's two components may change over a window like a parabola. */
constexpr std::size_t kPowers = 3;

/** Solves the symmetric positive definite system in place by Cholesky's method. */
void Solve(std::vector<std::vector<double>>& matrix, std::vector<double>& values) {
    const std::size_t size = values.size();
    for (std::size_t row = 0; row < size; ++row) {
        for (std::size_t column = 0; column <= row; ++column) {
            double sum = matrix[row][column];
            for (std::size_t k = 0; k < column; ++k)
                sum -= matrix[row][k] * matrix[column][k];
            matrix[row][column] = row == column ? std::sqrt(std::max(sum, 1e-12)) : sum / matrix[column][column];
        }
        for (std::size_t k = 0; k < row; ++k)
            values[row] -= matrix[row][k] * values[k];
        values[row] /= matrix[row][row];
    }
    for (std::size_t row = size; row-- > 0;) {
        for (std::size_t k = row + 1; k < size; ++k)
            values[row] -= matrix[k][row] * values[k];
        values[row] /= matrix[row][row];
    }
}

/** The values of all fitted functions at one place of the window, -1..1. */
std::vector<double> Basis(const std::vector<double>& frequencies, double place, double second) {
    std::vector<double> basis;
    for (const double frequency : frequencies) {
        const double phase = 2 * std::numbers::pi * frequency * second;
        for (std::size_t power = 0; power < kPowers; ++power) {
            const double factor = std::pow(place, static_cast<double>(power));
            basis.push_back(factor * std::cos(phase));
            basis.push_back(factor * std::sin(phase));
        }
    }
    return basis;
}

/** Second-order high-pass filter. */
class HighPass {
public:
    HighPass(double frequency, double quality, int rate) {
        const double angle = 2 * std::numbers::pi * frequency / rate;
        const double alpha = std::sin(angle) / (2 * quality);
        b0_ = (1 + std::cos(angle)) / 2 / (1 + alpha);
        a1_ = -2 * std::cos(angle) / (1 + alpha);
        a2_ = (1 - alpha) / (1 + alpha);
    }

    double Filter(double value) {
        const double result = b0_ * value + z1_;
        z1_ = -2 * b0_ * value - a1_ * result + z2_;
        z2_ = b0_ * value - a2_ * result;
        return result;
    }

private:
    double b0_, a1_, a2_;
    double z1_ = 0;
    double z2_ = 0;
};

} // namespace

std::size_t ToneMeter::Frame(double second) const {
    return std::min(samples_.size(), static_cast<std::size_t>(std::max(0.0, second) * rate_));
}

ToneMeter::Fit ToneMeter::FitTones(const std::vector<double>& frequencies, std::size_t first, std::size_t count) const {
    const std::size_t size = 2 * kPowers * frequencies.size();
    std::vector<std::vector<double>> matrix(size, std::vector<double>(size));
    std::vector<double> values(size);
    std::vector<std::vector<double>> bases;
    const double half = static_cast<double>(count) / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const double offset = static_cast<double>(i) - half;
        bases.push_back(Basis(frequencies, offset / half, offset / rate_));
        for (std::size_t row = 0; row < size; ++row) {
            values[row] += bases[i][row] * static_cast<double>(samples_[first + i]);
            for (std::size_t column = 0; column <= row; ++column)
                matrix[row][column] += bases[i][row] * bases[i][column];
        }
    }
    Solve(matrix, values);
    Fit fit;
    for (std::size_t tone = 0; tone < frequencies.size(); ++tone)
        fit.levels.push_back(std::hypot(values[2 * kPowers * tone], values[2 * kPowers * tone + 1]));
    for (std::size_t i = 0; i < count; ++i) {
        const double explained = std::inner_product(values.begin(), values.end(), bases[i].begin(), 0.0);
        fit.residualPeak = std::max(fit.residualPeak, std::abs(static_cast<double>(samples_[first + i]) - explained));
    }
    return fit;
}

std::vector<double> ToneMeter::Levels(const std::vector<double>& frequencies, double second) const {
    const std::size_t first = Frame(second - kWindow / 2);
    const std::size_t end = Frame(second + kWindow / 2);
    if (end < first + 2 * kPowers * frequencies.size())
        return std::vector<double>(frequencies.size());
    return FitTones(frequencies, first, end - first).levels;
}

double ToneMeter::Onset(const std::vector<double>& frequencies, std::size_t which, double level, double from) const {
    for (double second = from; second < Seconds(); second += 0.005) {
        if (Levels(frequencies, second)[which] >= level)
            return second;
    }
    return -1;
}

double ToneMeter::ResidualPeak(const std::vector<double>& frequencies, double begin, double end) const {
    const auto window = static_cast<std::size_t>(kWindow * rate_);
    double peak = 1e-9;
    // The windows overlap, so that no fault hides between two of them.
    for (std::size_t first = Frame(begin); first + window <= Frame(end); first += window / 2)
        peak = std::max(peak, FitTones(frequencies, first, window).residualPeak);
    return 20 * std::log10(peak);
}

double ToneMeter::TreblePeak(double begin, double end) const {
    constexpr double kTreble = 5000; // Hz
    // Butterworth's filter of the sixth order; it swings in during the samples before.
    HighPass stages[]{{kTreble, 0.5176, rate_}, {kTreble, 0.7071, rate_}, {kTreble, 1.9319, rate_}};
    double peak = 1e-9;
    const std::size_t first = Frame(begin);
    for (std::size_t i = Frame(begin - kWindow); i < Frame(end); ++i) {
        auto value = static_cast<double>(samples_[i]);
        for (HighPass& stage : stages)
            value = stage.Filter(value);
        if (i >= first)
            peak = std::max(peak, std::abs(value));
    }
    return 20 * std::log10(peak);
}

double ToneMeter::LongestSilence(double level, double begin, double end) const {
    std::size_t longest = 0;
    std::size_t current = 0;
    for (std::size_t i = Frame(begin); i < Frame(end); ++i) {
        current = std::abs(static_cast<double>(samples_[i])) < level ? current + 1 : 0;
        longest = std::max(longest, current);
    }
    return static_cast<double>(longest) / rate_;
}

} // namespace kalvo::test
