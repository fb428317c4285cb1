#pragma once

#include <QByteArray>

#include <functional>
#include <vector>

/** A signal of the module in two versions, of which each changes what the other has shown. */
struct SignalSample
{
    int page; ///< that receives it
    QByteArray name;
    std::function<void()> first;
    std::function<void()> second;
};

/** Every signal of the adaptor, by page. */
const std::vector<SignalSample> &signalSamples();

/** The first signal of the adaptor without a sample; empty when there is none. */
QByteArray signalWithoutSample();
