// SPDX-License-Identifier: GPL-3.0-or-later
#include "servicebands.h"

#include <algorithm>

namespace kestrel {

namespace {

const QList<ServiceBand> kList1 = {
    {"Air:", 118.0, 136.9875, 12.5}, {"Marine:", 156.05, 162.025, 12.5},
    {"Ham:", 29.6, 29.7, 5.0},       {"", 50.0, 54.0, 5.0},
    {"", 144.0, 148.0, 5.0},         {"", 420.0, 450.0, 12.5},
    {"", 902.0, 928.0, 12.5},        {"WX:", 162.4, 162.55, 25.0},
};

const QList<ServiceBand> kList2 = {
    {"", 33.02, 33.98, 20.0},    {"", 35.02, 0, 0},           {"", 35.64, 35.68, 40.0},
    {"", 37.02, 37.98, 20.0},    {"", 39.48, 39.94, 0},       {"", 43.64, 43.88, 0},
    {"", 45.19, 47.66, 0},       {"", 150.775, 170.15, 0},    {"", 423.0, 425.475, 0},
    {"", 453.05, 453.95, 0},     {"", 458.025, 458.95, 0},    {"", 460.525, 460.625, 0},
    {"", 462.95, 463.175, 0},    {"", 465.525, 465.625, 0},   {"", 467.95, 468.175, 0},
    {"", 470.3125, 472.7375, 0}, {"", 476.3125, 477.3875, 0}, {"", 482.3125, 484.7875, 0},
    {"", 494.3125, 495.4625, 0}, {"", 500.3375, 508.4875, 0}, {"", 806.0125, 820.9875, 0},
    {"", 851.1125, 865.9875, 0}, {"", 896.1125, 900.9875, 0}, {"", 935.0125, 939.9875, 0},
};

QString mhz(double v) {
    return QString::number(v, 'f', 4).rightJustified(8);
}

} // namespace

const QList<ServiceBand>& ServiceBandList(int list) {
    return list == 2 ? kList2 : kList1;
}

QStringList ServiceBandLines(int list) {
    const QList<ServiceBand>& bands = ServiceBandList(list);
    // List 2 has one heading for all its ranges; list 1 names each service on its first range.
    const QString heading = list == 2 ? QStringLiteral("Police / Fire:") : QString();
    qsizetype labelWidth = 0;
    for (const ServiceBand& b : bands)
        labelWidth = std::max<qsizetype>(labelWidth, qstrlen(b.label));
    labelWidth = std::max<qsizetype>(labelWidth, 7) + 1;

    // label | low | " - " | high | two blanks | step
    const qsizetype rangeWidth = 8 + 3 + 8;
    QStringList lines;
    lines << heading.leftJustified(labelWidth + rangeWidth + 2) + QStringLiteral("Step");
    for (const ServiceBand& b : bands) {
        QString line = QString::fromLatin1(b.label).leftJustified(labelWidth) + mhz(b.lowMHz);
        if (b.highMHz > 0)
            line += QStringLiteral(" - ") + mhz(b.highMHz);
        if (b.stepKHz > 0) {
            line = line.leftJustified(labelWidth + rangeWidth + 2);
            line += QString::number(b.stepKHz, 'f', 1).rightJustified(4);
        }
        lines << line;
    }
    return lines;
}

} // namespace kestrel
