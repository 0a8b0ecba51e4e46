#pragma once

#include <QSlider>

// A slider whose value is a floating-point number with a fixed number of
// decimals. Underneath it is an integer slider: a value v is held as the
// integer v x factor truncated toward zero, where factor = 10^decimals.
// minimum(), maximum() and value() of the base class are the scaled integers.
class DoubleSlider : public QSlider
{
    Q_OBJECT

public:
    // The largest number of decimals whose factor still fits a 32-bit integer.
    static constexpr int MaxDecimals = 9;

    explicit DoubleSlider(Qt::Orientation orientation, QWidget *parent = nullptr);

    int decimals() const { return decimals_; }
    int factor() const { return factor_; }

    // Rescales the range and the value to the new number of decimals. Values
    // above MaxDecimals are refused, since their factor would not fit.
    void setDecimals(int decimals);

signals:
    void valueChanged(double value);

public slots:
    void setRange(double min, double max);
    void setValue(double value);

private slots:
    void on_valueChanged(int value);

private:
    int decimals_ = 2;
    int factor_ = 100;
};
