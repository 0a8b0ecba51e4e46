#include "UI/SubWidget/DoubleSlider.h"

#include "LogCapture.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

// Records every change the base slider reports, so that a test can tell
// whether the base range or value was touched at all.
class RecordingSlider : public DoubleSlider
{
public:
    using DoubleSlider::DoubleSlider;
    QList<SliderChange> changes;
    bool rangeWasSet() const { return changes.contains(SliderRangeChange); }

protected:
    void sliderChange(SliderChange change) override
    {
        changes.append(change);
        DoubleSlider::sliderChange(change);
    }
};

} // namespace

class DoubleSliderTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_startsWithTwoDecimals();
    void setRange_scalesTheRangeByTheFactor();
    void setValue_nudgesValuesAwayFromZero_data();
    void setValue_nudgesValuesAwayFromZero();
    void setValue_emitsTheScaledValue();
    void userMove_emitsTheScaledValue();
    void setValue_sameValue_isNotSetAgain();
    void setRange_currentRange_leavesTheBaseSliderAlone();
    void setDecimals_rescalesRangeAndValue();
    void setDecimals_fewer_truncatesWithoutNudge();
    void setDecimals_currentDecimals_changeNothing();
    void setDecimals_noneOrNegative_useFactorOne_data();
    void setDecimals_noneOrNegative_useFactorOne();
    void setDecimals_factorDoesNotFit_isRefused();
};

void DoubleSliderTest::construction_startsWithTwoDecimals()
{
    DoubleSlider slider(Qt::Vertical, nullptr);
    QCOMPARE(slider.orientation(), Qt::Vertical);
    QCOMPARE(slider.decimals(), 2);
    QCOMPARE(slider.factor(), 100);
}

void DoubleSliderTest::setRange_scalesTheRangeByTheFactor()
{
    DoubleSlider slider(Qt::Horizontal, nullptr);
    QSignalSpy rangeSpy(&slider, &QAbstractSlider::rangeChanged);
    slider.setRange(-3.0, 3.0);
    QCOMPARE(slider.minimum(), -300);
    QCOMPARE(slider.maximum(), 300);
    QCOMPARE(rangeSpy.count(), 1);

    // Truncated toward zero at both ends.
    slider.setRange(-1.239, 2.999);
    QCOMPARE(slider.minimum(), -123);
    QCOMPARE(slider.maximum(), 299);
}

void DoubleSliderTest::setValue_nudgesValuesAwayFromZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("scaled");

    QTest::newRow("0.29") << 0.29 << 29;
    QTest::newRow("-0.29") << -0.29 << -29;
    QTest::newRow("1.005") << 1.005 << 100;
    QTest::newRow("-1.005") << -1.005 << -100;
    QTest::newRow("0.57") << 0.57 << 57;
    QTest::newRow("-2.01") << -2.01 << -201;
    QTest::newRow("0.009") << 0.009 << 0;
    QTest::newRow("-0.009") << -0.009 << 0;
    QTest::newRow("3") << 3.0 << 300;
}

void DoubleSliderTest::setValue_nudgesValuesAwayFromZero()
{
    QFETCH(double, value);
    QFETCH(int, scaled);

    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setValue(value);
    QCOMPARE(slider.value(), scaled);
}

void DoubleSliderTest::setValue_emitsTheScaledValue()
{
    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    QSignalSpy spy(&slider, qOverload<double>(&DoubleSlider::valueChanged));

    slider.setValue(-1.25);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toDouble(), -1.25);

    // A value beyond the range is clamped by the base slider and reported as such.
    slider.setValue(7.5);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toDouble(), 3.0);
}

void DoubleSliderTest::userMove_emitsTheScaledValue()
{
    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setSingleStep(1);
    slider.setValue(0.5);
    QSignalSpy spy(&slider, qOverload<double>(&DoubleSlider::valueChanged));

    QTest::keyClick(&slider, Qt::Key_Right);
    QCOMPARE(slider.value(), 51);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toDouble(), 0.51);
}

void DoubleSliderTest::setValue_sameValue_isNotSetAgain()
{
    RecordingSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setValue(1.5);
    slider.changes.clear();
    QSignalSpy spy(&slider, qOverload<double>(&DoubleSlider::valueChanged));

    slider.setValue(1.501); // truncates to the current 150
    QCOMPARE(slider.value(), 150);
    QCOMPARE(spy.count(), 0);
    QVERIFY(slider.changes.isEmpty());
}

void DoubleSliderTest::setRange_currentRange_leavesTheBaseSliderAlone()
{
    RecordingSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    QVERIFY(slider.rangeWasSet());
    slider.changes.clear();
    QSignalSpy rangeSpy(&slider, &QAbstractSlider::rangeChanged);
    QSignalSpy valueSpy(&slider, qOverload<double>(&DoubleSlider::valueChanged));

    slider.setRange(-3.0, 3.0);
    slider.setRange(-3.004, 3.009); // the same integers after truncation

    QVERIFY(slider.changes.isEmpty());
    QCOMPARE(rangeSpy.count(), 0);
    QCOMPARE(valueSpy.count(), 0);
    QCOMPARE(slider.minimum(), -300);
    QCOMPARE(slider.maximum(), 300);
}

void DoubleSliderTest::setDecimals_rescalesRangeAndValue()
{
    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setValue(1.5);
    QCOMPARE(slider.value(), 150);
    QSignalSpy spy(&slider, qOverload<double>(&DoubleSlider::valueChanged));

    slider.setDecimals(3);

    QCOMPARE(slider.decimals(), 3);
    QCOMPARE(slider.factor(), 1000);
    QCOMPARE(slider.minimum(), -3000);
    QCOMPARE(slider.maximum(), 3000);
    QCOMPARE(slider.value(), 1500);
    // The double value is the same; it is reported with the new factor.
    QVERIFY(!spy.isEmpty());
    QCOMPARE(spy.last().at(0).toDouble(), 1.5);

    slider.setValue(0.125);
    QCOMPARE(slider.value(), 125);
}

void DoubleSliderTest::setDecimals_fewer_truncatesWithoutNudge()
{
    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setValue(-1.57);

    slider.setDecimals(1);

    QCOMPARE(slider.factor(), 10);
    QCOMPARE(slider.minimum(), -30);
    QCOMPARE(slider.maximum(), 30);
    QCOMPARE(slider.value(), -15);
}

void DoubleSliderTest::setDecimals_currentDecimals_changeNothing()
{
    RecordingSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setValue(2.0);
    slider.changes.clear();

    slider.setDecimals(2);

    QVERIFY(slider.changes.isEmpty());
    QCOMPARE(slider.factor(), 100);
    QCOMPARE(slider.value(), 200);
}

void DoubleSliderTest::setDecimals_noneOrNegative_useFactorOne_data()
{
    QTest::addColumn<int>("decimals");
    QTest::newRow("0") << 0;
    QTest::newRow("-2") << -2;
}

void DoubleSliderTest::setDecimals_noneOrNegative_useFactorOne()
{
    QFETCH(int, decimals);

    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    slider.setValue(2.75);

    slider.setDecimals(decimals);

    QCOMPARE(slider.decimals(), decimals);
    QCOMPARE(slider.factor(), 1);
    QCOMPARE(slider.minimum(), -3);
    QCOMPARE(slider.maximum(), 3);
    QCOMPARE(slider.value(), 2);
}

void DoubleSliderTest::setDecimals_factorDoesNotFit_isRefused()
{
    DoubleSlider slider(Qt::Horizontal, nullptr);
    slider.setRange(-3.0, 3.0);
    LogCapture log;

    slider.setDecimals(DoubleSlider::MaxDecimals + 1);

    QCOMPARE(slider.decimals(), 2);
    QCOMPARE(slider.factor(), 100);
    QCOMPARE(slider.minimum(), -300);
    QCOMPARE(log.count(QtWarningMsg, QStringLiteral("decimals:")), 1);

    slider.setRange(-1.0, 1.0);
    slider.setDecimals(DoubleSlider::MaxDecimals);
    QCOMPARE(slider.factor(), 1000000000);
    QCOMPARE(slider.maximum(), 1000000000);
}

QTEST_MAIN(DoubleSliderTest)
#include "tst_doubleslider.moc"
