#include "UI/SubWidget/DoubleSlider.h"

#include "Common/Logging.h"

#include <cmath>
#include <limits>

namespace {

// Truncation toward zero, kept inside the range of the base slider's integers.
int truncateToInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (value >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

} // namespace

DoubleSlider::DoubleSlider(Qt::Orientation orientation, QWidget *parent)
    : QSlider(orientation, parent)
{
    connect(this, qOverload<int>(&QSlider::valueChanged), this, &DoubleSlider::on_valueChanged);
}

void DoubleSlider::setDecimals(int decimals)
{
    if (decimals == decimals_)
        return;
    if (decimals > MaxDecimals) {
        BEX_WARNING(lcWidget) << "decimals:" << decimals << "exceeds" << MaxDecimals;
        return;
    }

    const double oldMinimum = minimum() / static_cast<double>(factor_);
    const double oldMaximum = maximum() / static_cast<double>(factor_);
    const double oldValue = value() / static_cast<double>(factor_);

    decimals_ = decimals;
    int factor = 1;
    for (int i = 0; i < decimals_; ++i)
        factor *= 10;
    factor_ = factor;

    // Rescaled as they are: a value that was exact keeps its digits, so no
    // nudge is added here.
    QSlider::setRange(truncateToInt(factor_ * oldMinimum), truncateToInt(factor_ * oldMaximum));
    QSlider::setValue(truncateToInt(factor_ * oldValue));
}

void DoubleSlider::setRange(double min, double max)
{
    const int scaledMin = truncateToInt(factor_ * min);
    const int scaledMax = truncateToInt(factor_ * max);
    if (scaledMin != minimum() || scaledMax != maximum())
        QSlider::setRange(scaledMin, scaledMax);
}

void DoubleSlider::setValue(double value)
{
    // Binary fractions fall just short of many decimal values (0.29 x 100 is
    // 28.999...); a nudge far smaller than one step, away from zero, keeps
    // the truncation on the intended integer.
    const double nudge = (value >= 0 ? 0.00001 : -0.00001) / factor_;
    const int scaled = truncateToInt(factor_ * value + nudge);
    if (scaled != QSlider::value())
        QSlider::setValue(scaled);
}

void DoubleSlider::on_valueChanged(int value)
{
    emit valueChanged(value / static_cast<double>(factor_));
}
