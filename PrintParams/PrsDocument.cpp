#include "PrsDocument.h"

#include <IUIPrintParamsHandler.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QSaveFile>
#include <QSet>

#include <cmath>

namespace bex::printparams {

namespace {

const QString formatName = QStringLiteral("BexPrinterDescription");
constexpr int formatVersion = 1;

const QString keyFormat = QStringLiteral("format");
const QString keyFormatVersion = QStringLiteral("formatVersion");
const QString keyDriverName = QStringLiteral("driverName");
const QString keyPdvFile = QStringLiteral("pdvFile");
const QString keyModeId = QStringLiteral("modeId");
const QString keyEnums = QStringLiteral("enums");
const QString keyEnumId = QStringLiteral("enumId");
const QString keyKind = QStringLiteral("kind");
const QString keyKey = QStringLiteral("key");
const QString keyKeyEn = QStringLiteral("keyEn");
const QString keySelected = QStringLiteral("selected");
const QString keyValues = QStringLiteral("values");
const QString keyText = QStringLiteral("text");
const QString keyTextEn = QStringLiteral("textEn");
const QString keyXDpi = QStringLiteral("xDpi");
const QString keyYDpi = QStringLiteral("yDpi");
const QString keyChannels = QStringLiteral("channels");
const QString keyName = QStringLiteral("name");
const QString keyDensity = QStringLiteral("density");
const QString keyMaxInk = QStringLiteral("maxInk");
const QString keyOrder = QStringLiteral("order");
const QString keyOn = QStringLiteral("on");
const QString keyCombinations = QStringLiteral("combinations");
const QString keyResolution = QStringLiteral("resolution");
const QString keyPaper = QStringLiteral("paper");
const QString keyInk = QStringLiteral("ink");
const QString keyIcc = QStringLiteral("icc");
const QString keyRgb = QStringLiteral("rgb");
const QString keyCmyk = QStringLiteral("cmyk");
const QString keyOutput = QStringLiteral("output");
const QString keyIntent = QStringLiteral("intent");

// The kinds an enum may name; an enum without one is of kind Common. Every
// document has one enum of each, in this order of checking.
struct KindName
{
    EnumKind kind;
    const char *name;
};

constexpr KindName kindNames[] = {
    {EnumKind::Resolution, "resolution"},
    {EnumKind::Paper, "paper"},
    {EnumKind::Ink, "ink"},
};

// Collects the first reason a document is refused; every reader below
// returns false once it has one.
class Reader
{
public:
    explicit Reader(QString *error)
        : error_(error)
    {}

    bool fail(const QString &reason)
    {
        if (error_ && error_->isEmpty())
            *error_ = reason;
        return false;
    }

    // Entry i of a list, which must be an object; at names the entry in the
    // reason.
    bool entry(const QJsonArray &array, int i, const QString &at, QJsonObject &out)
    {
        if (!array.at(i).isObject())
            return fail(at + QStringLiteral(" is not an object"));
        out = array.at(i).toObject();
        return true;
    }

    // A refusal of one key's value: where: "key" problem.
    bool failKey(const QString &where, const QString &key, const char *problem)
    {
        return fail(where + QStringLiteral(": \"") + key + QStringLiteral("\" ") + QLatin1String(problem));
    }

    bool text(const QJsonObject &object, const QString &key, int capacity, bool required, QString &out,
              const QString &where)
    {
        const QJsonValue value = object.value(key);
        if (value.isUndefined()) {
            if (required)
                return failKey(where, key, "missing");
            out.clear();
            return true;
        }
        if (!value.isString())
            return failKey(where, key, "is not a text");
        out = value.toString();
        if (required && out.isEmpty())
            return failKey(where, key, "is empty");
        if (QString::fromLocal8Bit(out.toLocal8Bit()) != out)
            return failKey(where, key, "holds text the local 8-bit encoding cannot hold");
        if (!fitsField(out, capacity))
            return failKey(where, key, "too long or holds a zero character");
        return true;
    }

    bool integer(const QJsonObject &object, const QString &key, qint64 min, qint64 max, qint64 &out,
                 const QString &where)
    {
        double number = 0;
        if (!real(object, key, double(min), double(max), number, where))
            return false;
        if (std::floor(number) != number)
            return failKey(where, key, "out of range");
        out = qint64(number);
        return true;
    }

    bool real(const QJsonObject &object, const QString &key, double min, double max, double &out,
              const QString &where)
    {
        const QJsonValue value = object.value(key);
        if (!value.isDouble())
            return failKey(where, key, "missing or not a number");
        out = value.toDouble();
        if (!std::isfinite(out) || out < min || out > max)
            return failKey(where, key, "out of range");
        return true;
    }

    bool iccName(const QJsonObject &object, const QString &key, QString &out, const QString &where)
    {
        if (!text(object, key, int(kIccPathSize), false, out, where))
            return false;
        if (!isIccProfileName(out))
            return failKey(where, key, "leaves its ICC folder or is not a file name");
        return true;
    }

    bool array(const QJsonObject &object, const QString &key, int minSize, int maxSize, QJsonArray &out,
               const QString &where)
    {
        const QJsonValue value = object.value(key);
        if (!value.isArray())
            return failKey(where, key, "missing or not a list");
        out = value.toArray();
        if (out.size() < minSize || out.size() > maxSize)
            return failKey(where, key, "has a bad number of entries");
        return true;
    }

    bool channels(const QJsonArray &array, QVector<PrsChannel> &out, const QString &where)
    {
        out.clear();
        QSet<qint64> orders;
        QSet<QString> names;
        for (int i = 0; i < array.size(); ++i) {
            const QString at = where + QStringLiteral(" channel ") + QString::number(i);
            QJsonObject object;
            if (!entry(array, i, at, object))
                return false;
            PrsChannel channel;
            qint64 order = 0;
            if (!text(object, keyName, int(kInkChannelNameSize), true, channel.name, at) ||
                !real(object, keyDensity, kMinDensity, kMaxDensity, channel.density, at) ||
                !real(object, keyMaxInk, kMinMaxInk, kMaxMaxInk, channel.maxInk, at) ||
                !integer(object, keyOrder, 0, array.size() - 1, order, at))
                return false;
            const QJsonValue on = object.value(keyOn);
            if (!on.isBool())
                return fail(at + QStringLiteral(": \"on\" missing or not true/false"));
            channel.on = on.toBool();
            if (orders.contains(order))
                return fail(at + QStringLiteral(": \"order\" used twice"));
            orders.insert(order);
            // Readers look channels up by name, and some ignore case
            // ("c" is cyan): two names that differ only in case would be
            // one channel to them.
            const QString folded = channel.name.toCaseFolded();
            if (names.contains(folded))
                return fail(at + QStringLiteral(": \"name\" used twice (ignoring case)"));
            names.insert(folded);
            channel.order = int(order);
            out.append(channel);
        }
        return true;
    }

private:
    QString *error_;
};

QJsonArray channelsToJson(const QVector<PrsChannel> &channels)
{
    QJsonArray array;
    for (const PrsChannel &channel : channels) {
        QJsonObject object;
        object.insert(keyName, channel.name);
        object.insert(keyDensity, channel.density);
        object.insert(keyMaxInk, channel.maxInk);
        object.insert(keyOrder, channel.order);
        object.insert(keyOn, channel.on);
        array.append(object);
    }
    return array;
}

QString kindName(EnumKind kind)
{
    for (const KindName &entry : kindNames) {
        if (entry.kind == kind)
            return QString::fromLatin1(entry.name);
    }
    return QString();
}

std::optional<EnumKind> kindNamed(const QString &name)
{
    for (const KindName &entry : kindNames) {
        if (name == QLatin1String(entry.name))
            return entry.kind;
    }
    return std::nullopt;
}

bool sameChannelNames(const QVector<PrsChannel> &a, const QVector<PrsChannel> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (a.at(i).name != b.at(i).name)
            return false;
    }
    return true;
}

} // namespace

bool fitsField(const QString &text, int capacity)
{
    const QByteArray bytes = text.toLocal8Bit();
    return bytes.size() < capacity && !bytes.contains('\0') && QString::fromLocal8Bit(bytes) == text;
}

bool isIccProfileName(const QString &name)
{
    if (name.isEmpty())
        return true;
    for (const QChar c : name) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7f || c == QLatin1Char(':'))
            return false;
    }
    const QString slashed = QString(name).replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QVector<QStringRef> parts = slashed.splitRef(QLatin1Char('/'));
    for (const QStringRef &part : parts) {
        if (part.isEmpty() || part == QLatin1String(".") || part == QLatin1String(".."))
            return false;
    }
    return true;
}

std::optional<PrsDocument> PrsDocument::load(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot open ") + path + QStringLiteral(": ") + file.errorString();
        return std::nullopt;
    }
    if (file.size() > kMaxPrsFileSize) {
        if (error)
            *error = QStringLiteral("file too large: ") + path;
        return std::nullopt;
    }
    return parse(file.read(kMaxPrsFileSize + 1), error);
}

std::optional<PrsDocument> PrsDocument::parse(const QByteArray &data, QString *error)
{
    Reader read(error);
    if (data.size() > kMaxPrsFileSize) {
        read.fail(QStringLiteral("file too large"));
        return std::nullopt;
    }
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(data, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        read.fail(QStringLiteral("not JSON: ") + parseError.errorString() + QStringLiteral(" at offset ") +
                  QString::number(parseError.offset));
        return std::nullopt;
    }
    if (!json.isObject()) {
        read.fail(QStringLiteral("the document is not an object"));
        return std::nullopt;
    }
    const QJsonObject root = json.object();
    const QString top = QStringLiteral("document");
    if (root.value(keyFormat).toString() != formatName) {
        read.fail(QStringLiteral("\"format\" is not \"") + formatName + QStringLiteral("\""));
        return std::nullopt;
    }
    qint64 version = 0;
    if (!read.integer(root, keyFormatVersion, formatVersion, formatVersion, version, top))
        return std::nullopt;

    PrsDocument doc;
    qint64 modeId = 0;
    QJsonArray enums;
    QJsonArray channels;
    if (!read.text(root, keyDriverName, int(kPrinterNameSize), true, doc.driverName, top) ||
        !read.text(root, keyPdvFile, int(kPrinterPrsPathSize), false, doc.pdvFile, top) ||
        !read.integer(root, keyModeId, INT32_MIN, INT32_MAX, modeId, top) ||
        !read.array(root, keyEnums, 3, kMaxEnums, enums, top) ||
        !read.array(root, keyChannels, 1, kMaxChannels, channels, top) ||
        !read.channels(channels, doc.channels, top))
        return std::nullopt;
    doc.modeId = qint32(modeId);
    // The .pdv file lies next to the .prs file: a bare file name.
    if (doc.pdvFile.contains(QLatin1Char('/')) || doc.pdvFile.contains(QLatin1Char('\\')) ||
        doc.pdvFile == QStringLiteral(".") || doc.pdvFile == QStringLiteral("..")) {
        read.fail(QStringLiteral("document: \"pdvFile\" is not a bare file name"));
        return std::nullopt;
    }

    // Keys are unique as the bytes the handler hands out, in either
    // language: readers tell the resolution, paper and ink settings from
    // the others by their key.
    QSet<quint32> enumIds;
    QSet<QByteArray> keys;
    QSet<QByteArray> keysEn;
    for (int i = 0; i < enums.size(); ++i) {
        const QString at = QStringLiteral("enum ") + QString::number(i);
        QJsonObject object;
        if (!read.entry(enums, i, at, object))
            return std::nullopt;
        PrsEnum item;
        qint64 enumId = 0;
        qint64 selected = 0;
        QJsonArray values;
        QString kind;
        if (!read.integer(object, keyEnumId, 0, UINT32_MAX, enumId, at) ||
            !read.text(object, keyKey, int(kEnumKeySize), true, item.key, at) ||
            !read.text(object, keyKeyEn, int(kEnumKeySize), false, item.keyEn, at) ||
            !read.text(object, keyKind, 32, false, kind, at) ||
            !read.array(object, keyValues, 1, kMaxEnumValues, values, at) ||
            !read.integer(object, keySelected, 0, values.size() - 1, selected, at))
            return std::nullopt;
        item.enumId = quint32(enumId);
        item.selected = int(selected);
        if (const std::optional<EnumKind> named = kindNamed(kind))
            item.kind = *named;
        else if (!kind.isEmpty()) {
            read.fail(at + QStringLiteral(": unknown kind \"") + kind + QStringLiteral("\""));
            return std::nullopt;
        }
        const QByteArray keyBytes = item.key.toLocal8Bit();
        const QByteArray keyEnBytes = (item.keyEn.isEmpty() ? item.key : item.keyEn).toLocal8Bit();
        if (enumIds.contains(item.enumId) || keys.contains(keyBytes) || keysEn.contains(keyEnBytes)) {
            read.fail(at + QStringLiteral(": enumId or key used twice"));
            return std::nullopt;
        }
        if (item.kind != EnumKind::Common && doc.indexOfKind(item.kind) >= 0) {
            read.fail(at + QStringLiteral(": a second enum of kind ") + kind);
            return std::nullopt;
        }
        enumIds.insert(item.enumId);
        keys.insert(keyBytes);
        keysEn.insert(keyEnBytes);

        for (int v = 0; v < values.size(); ++v) {
            const QString valueAt = at + QStringLiteral(" value ") + QString::number(v);
            QJsonObject valueObject;
            if (!read.entry(values, v, valueAt, valueObject))
                return std::nullopt;
            PrsEnumValue value;
            if (!read.text(valueObject, keyText, int(kEnumValueSize), true, value.text, valueAt) ||
                !read.text(valueObject, keyTextEn, int(kEnumValueSize), false, value.textEn, valueAt))
                return std::nullopt;
            if (item.kind == EnumKind::Resolution) {
                qint64 x = 0;
                qint64 y = 0;
                if (!read.integer(valueObject, keyXDpi, 1, kMaxDpi, x, valueAt) ||
                    !read.integer(valueObject, keyYDpi, 1, kMaxDpi, y, valueAt))
                    return std::nullopt;
                value.xDpi = quint32(x);
                value.yDpi = quint32(y);
            }
            item.values.append(value);
        }
        doc.enums.append(item);
    }
    for (const KindName &entry : kindNames) {
        if (doc.indexOfKind(entry.kind) < 0) {
            read.fail(QStringLiteral("no enum of kind ") + QLatin1String(entry.name));
            return std::nullopt;
        }
    }

    if (root.contains(keyCombinations)) {
        QJsonArray combinations;
        if (!read.array(root, keyCombinations, 0, kMaxCombinations, combinations, top))
            return std::nullopt;
        const int resolutionCount = doc.enums.at(doc.indexOfKind(EnumKind::Resolution)).values.size();
        const int paperCount = doc.enums.at(doc.indexOfKind(EnumKind::Paper)).values.size();
        const int inkCount = doc.enums.at(doc.indexOfKind(EnumKind::Ink)).values.size();
        QSet<qint64> seen;
        for (int i = 0; i < combinations.size(); ++i) {
            const QString at = QStringLiteral("combination ") + QString::number(i);
            QJsonObject object;
            if (!read.entry(combinations, i, at, object))
                return std::nullopt;
            PrsCombination combination;
            qint64 resolution = 0;
            qint64 paper = 0;
            qint64 ink = 0;
            if (!read.integer(object, keyResolution, 0, resolutionCount - 1, resolution, at) ||
                !read.integer(object, keyPaper, 0, paperCount - 1, paper, at) ||
                !read.integer(object, keyInk, 0, inkCount - 1, ink, at))
                return std::nullopt;
            combination.resolution = int(resolution);
            combination.paper = int(paper);
            combination.ink = int(ink);
            const qint64 triple = (resolution * kMaxEnumValues + paper) * kMaxEnumValues + ink;
            if (seen.contains(triple)) {
                read.fail(at + QStringLiteral(" repeats an earlier combination"));
                return std::nullopt;
            }
            seen.insert(triple);
            if (object.contains(keyIcc)) {
                if (!object.value(keyIcc).isObject()) {
                    read.fail(at + QStringLiteral(": \"icc\" is not an object"));
                    return std::nullopt;
                }
                const QJsonObject iccObject = object.value(keyIcc).toObject();
                const QString iccAt = at + QStringLiteral(" icc");
                PrsIcc icc;
                qint64 intent = 0;
                if (!read.iccName(iccObject, keyRgb, icc.rgb, iccAt) ||
                    !read.iccName(iccObject, keyCmyk, icc.cmyk, iccAt) ||
                    !read.iccName(iccObject, keyOutput, icc.output, iccAt) ||
                    !read.integer(iccObject, keyIntent, kIccIntentPerceptual, kIccIntentAbsoluteColorimetric,
                                  intent, iccAt))
                    return std::nullopt;
                icc.intent = int(intent);
                combination.icc = icc;
            }
            if (object.contains(keyChannels)) {
                QJsonArray channelArray;
                QVector<PrsChannel> own;
                if (!read.array(object, keyChannels, 1, kMaxChannels, channelArray, at) ||
                    !read.channels(channelArray, own, at))
                    return std::nullopt;
                // Ink i of the ink order is channel i everywhere, so a
                // combination may tune the channels but not rename or
                // add them.
                if (!sameChannelNames(own, doc.channels)) {
                    read.fail(at + QStringLiteral(": channels differ from the driver's channels"));
                    return std::nullopt;
                }
                combination.channels = own;
            }
            doc.combinations.append(combination);
        }
    }
    return doc;
}

QByteArray PrsDocument::toJson() const
{
    QJsonObject root;
    root.insert(keyFormat, formatName);
    root.insert(keyFormatVersion, formatVersion);
    root.insert(keyDriverName, driverName);
    if (!pdvFile.isEmpty())
        root.insert(keyPdvFile, pdvFile);
    root.insert(keyModeId, modeId);

    QJsonArray enumArray;
    for (const PrsEnum &item : enums) {
        QJsonObject object;
        object.insert(keyEnumId, qint64(item.enumId));
        if (item.kind != EnumKind::Common)
            object.insert(keyKind, kindName(item.kind));
        object.insert(keyKey, item.key);
        if (!item.keyEn.isEmpty())
            object.insert(keyKeyEn, item.keyEn);
        object.insert(keySelected, item.selected);
        QJsonArray values;
        for (const PrsEnumValue &value : item.values) {
            QJsonObject valueObject;
            valueObject.insert(keyText, value.text);
            if (!value.textEn.isEmpty())
                valueObject.insert(keyTextEn, value.textEn);
            if (item.kind == EnumKind::Resolution) {
                valueObject.insert(keyXDpi, qint64(value.xDpi));
                valueObject.insert(keyYDpi, qint64(value.yDpi));
            }
            values.append(valueObject);
        }
        object.insert(keyValues, values);
        enumArray.append(object);
    }
    root.insert(keyEnums, enumArray);
    root.insert(keyChannels, channelsToJson(channels));

    QJsonArray combinationArray;
    for (const PrsCombination &combination : combinations) {
        QJsonObject object;
        object.insert(keyResolution, combination.resolution);
        object.insert(keyPaper, combination.paper);
        object.insert(keyInk, combination.ink);
        if (combination.icc) {
            QJsonObject icc;
            icc.insert(keyRgb, combination.icc->rgb);
            icc.insert(keyCmyk, combination.icc->cmyk);
            icc.insert(keyOutput, combination.icc->output);
            icc.insert(keyIntent, combination.icc->intent);
            object.insert(keyIcc, icc);
        }
        if (combination.channels)
            object.insert(keyChannels, channelsToJson(*combination.channels));
        combinationArray.append(object);
    }
    root.insert(keyCombinations, combinationArray);
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

bool PrsDocument::save(const QString &path, QString *error) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const QByteArray data = toJson();
    if (file.write(data) != data.size() || !file.commit()) {
        if (error)
            *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    return true;
}

int PrsDocument::indexOfEnum(quint32 enumId) const
{
    for (int i = 0; i < enums.size(); ++i) {
        if (enums.at(i).enumId == enumId)
            return i;
    }
    return -1;
}

int PrsDocument::indexOfKind(EnumKind kind) const
{
    for (int i = 0; i < enums.size(); ++i) {
        if (enums.at(i).kind == kind)
            return i;
    }
    return -1;
}

int PrsDocument::selectedOf(EnumKind kind) const
{
    const int index = indexOfKind(kind);
    return index < 0 ? -1 : enums.at(index).selected;
}

const PrsCombination *PrsDocument::currentCombination() const
{
    const int resolution = selectedOf(EnumKind::Resolution);
    const int paper = selectedOf(EnumKind::Paper);
    const int ink = selectedOf(EnumKind::Ink);
    for (const PrsCombination &combination : combinations) {
        if (combination.resolution == resolution && combination.paper == paper && combination.ink == ink)
            return &combination;
    }
    return nullptr;
}

PrsCombination *PrsDocument::currentCombination()
{
    return const_cast<PrsCombination *>(static_cast<const PrsDocument *>(this)->currentCombination());
}

PrsCombination *PrsDocument::ensureCurrentCombination()
{
    if (PrsCombination *combination = currentCombination())
        return combination;
    if (combinations.size() >= kMaxCombinations)
        return nullptr;
    PrsCombination combination;
    combination.resolution = selectedOf(EnumKind::Resolution);
    combination.paper = selectedOf(EnumKind::Paper);
    combination.ink = selectedOf(EnumKind::Ink);
    combinations.append(combination);
    return &combinations.last();
}

const QVector<PrsChannel> &PrsDocument::currentChannels() const
{
    const PrsCombination *combination = currentCombination();
    return combination && combination->channels ? *combination->channels : channels;
}

bool PrsDocument::setCurrentChannels(const QVector<PrsChannel> &edited)
{
    if (edited == currentChannels())
        return true;
    PrsCombination *combination = ensureCurrentCombination();
    if (!combination)
        return false;
    combination->channels = edited;
    return true;
}

} // namespace bex::printparams
