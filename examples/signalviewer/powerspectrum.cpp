#include "powerspectrum.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double twoPi = 6.283185307179586;
constexpr std::size_t segment = PowerSpectrum::size;

} // namespace

PowerSpectrum::PowerSpectrum()
    : m_transform(size, FourierTransform::Direction::Forward)
{
    double energy = 0.0;
    for (std::size_t i = 0; i < segment; ++i) {
        m_window.push_back(0.5 - 0.5 * std::cos(twoPi * double(i) / segment));
        energy += m_window.back() * m_window.back();
    }
    for (double& weight : m_window)
        weight /= std::sqrt(energy);
}

std::vector<double> PowerSpectrum::densities(Samples const& samples)
{
    std::vector<double> sums(segment, 0.0);
    double segments = 0.0;
    for (std::size_t start = 0; start + segment <= samples.size(); start += segment / 2) {
        std::transform(m_window.cbegin(), m_window.cend(), samples.data() + start,
                       m_transform.begin(),
                       [](double weight, Complex sample) { return weight * sample; });
        m_transform.run();
        // The transform has the negative frequencies behind the positive ones.
        for (std::size_t i = 0; i < segment; ++i)
            sums[(i + segment / 2) % segment] += std::norm(m_transform.begin()[i]);
        segments += 1.0;
    }
    for (double& sum : sums)
        sum /= std::max(segments, 1.0);
    return sums;
}
