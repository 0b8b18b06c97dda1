#include "packets/EncodedPacket.h"
#include "packets/PacketGate.h"
#include "packets/PacketRing.h"
#include "packets/PacketStamper.h"
#include "packets/PictureOrder.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

namespace {

constexpr qint64 StartMs = 1'700'000'000'000;

PacketPtr plainPacket(qint64 wallMs, bool isKey, int bytes)
{
    AvPacket packet(av_packet_alloc());
    av_new_packet(packet.get(), bytes);
    packet->pts = packet->dts = wallMs;
    packet->flags = isKey ? AV_PKT_FLAG_KEY : 0;
    return std::make_shared<EncodedPacket>(EncodedPacket{std::move(packet), nullptr, wallMs});
}

/// What comes, as seconds tenths, and -1 for each end.
struct Heard : PacketSink
{
    void take(const PacketPtr& packet) override { what.append(int((packet->wallMs - StartMs) / 100)); }
    void end() override { what.append(-1); }
    QVector<int> what;
};

} // namespace

class tst_packets : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ringKeepsTheLastMinute_data();
    void ringKeepsTheLastMinute();
    void gateLetsThroughWhatIsAround();
    void timesGoOn();
    void liveTimesFollowTheirArrival_data();
    void liveTimesFollowTheirArrival();
    void tellsWhenPicturesWereTaken();
    void knowsWhetherPicturesKeepOrder_data();
    void knowsWhetherPicturesKeepOrder();
};

void tst_packets::ringKeepsTheLastMinute_data()
{
    QTest::addColumn<int>("packets");
    QTest::addColumn<int>("keyDistance");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("firstLeft");
    QTest::addColumn<int>("left");
    // One packet each 100 ms into a ring of 1,000 ms and 10,000 bytes.
    QTest::newRow("just full") << 14 << 4 << 10 << 0 << 14;
    QTest::newRow("one group too many") << 15 << 4 << 10 << 4 << 11;
    QTest::newRow("a long run") << 1000 << 4 << 10 << 988 << 12;
    QTest::newRow("big packets") << 20 << 4 << 1200 << 12 << 8;
    QTest::newRow("a group beyond all bounds") << 19 << 20 << 1200 << -1 << 0;
    QTest::newRow("the next group after it") << 22 << 20 << 1200 << 20 << 2;
}

void tst_packets::ringKeepsTheLastMinute()
{
    QFETCH(int, packets);
    QFETCH(int, keyDistance);
    QFETCH(int, bytes);
    QFETCH(int, firstLeft);
    QFETCH(int, left);
    PacketRing ring(1000, 10'000);
    ring.take(plainPacket(StartMs - 100, false, bytes));
    QVERIFY(ring.snapshot().empty());
    for (int i = 0; i < packets; ++i)
        ring.take(plainPacket(StartMs + i * 100, i % keyDistance == 0, bytes));
    const std::vector<PacketPtr> kept = ring.snapshot();
    QCOMPARE(int(kept.size()), left);
    QVERIFY(kept.empty() || kept.front()->isKey());
    QVERIFY(kept.empty() || kept.front()->wallMs == StartMs + firstLeft * 100);
}

void tst_packets::gateLetsThroughWhatIsAround()
{
    const auto heard = std::make_shared<Heard>();
    PacketGate gate(heard, 1000, 500);
    // A packet each 100 ms, every tenth a key frame; a second within the time after is one run with the
    // first.
    for (int i = 0; i < 200; ++i) {
        gate.setOpen((i >= 50 && i < 60) || i == 62 || i == 150);
        if (i == 125)
            gate.skip();
        gate.take(plainPacket(StartMs + i * 100, i % 10 == 0, 10));
    }
    QVector<int> expected;
    for (int i = 30; i <= 67; ++i)
        expected.append(i);
    expected.append(-1);
    for (int i = 130; i <= 155; ++i)
        expected.append(i);
    expected.append(-1);
    QCOMPARE(heard->what, expected);
}

void tst_packets::timesGoOn()
{
    const AvParameters parameters(avcodec_parameters_alloc());
    const auto format = StreamFormat::of(*parameters, {1, 1000}, nullptr);
    PacketStamper stamper(format);
    const auto packetAt = [](int64_t ms) {
        AvPacket packet(av_packet_alloc());
        packet->pts = packet->dts = ms;
        return packet;
    };
    QVERIFY(!stamper.stampSound(*packetAt(5000), format));
    // From 0 on, without a repeated time; what lies more than a second back is the stream's first again.
    for (const auto& [given, stamped] :
         {std::pair(5000, 0), {9000, 4000}, {9000, 4001}, {8500, 4002}, {100, 4042}})
        QCOMPARE(int(stamper.stamp(*packetAt(given))->packet->dts), stamped);
    QCOMPARE(int(stamper.stampSound(*packetAt(200), format)->packet->dts), 4142);
    QVERIFY(!stamper.stampSound(*packetAt(200), format));
}

void tst_packets::liveTimesFollowTheirArrival_data()
{
    QTest::addColumn<QVector<qint64>>("own");
    QTest::addColumn<QVector<qint64>>("came");
    QTest::addColumn<QVector<qint64>>("stamped");
    using Times = QVector<qint64>;
    constexpr qint64 Hour = 3'600'000;
    QTest::newRow("jitter is left alone")
        << Times{0, 40, 80, 120} << Times{0, 90, 95, 400} << Times{0, 40, 80, 120};
    QTest::newRow("held up on the way")
        << Times{0, 40, 80, 120} << Times{0, 5000, 5001, 5002} << Times{0, 40, 80, 120};
    QTest::newRow("stand still") << Times{7, 7, 7, 7} << Times{0, 40, 90, 130} << Times{0, 40, 90, 130};
    QTest::newRow("leap an hour on") << Times{0, 40, Hour, Hour + 40} << Times{0, 40, 80, 120}
                                     << Times{0, 40, 80, 120};
    QTest::newRow("leap an hour back")
        << Times{Hour, Hour + 40, 0, 40} << Times{0, 40, 80, 120} << Times{0, 40, 80, 120};
    QTest::newRow("a real pause") << Times{0, 40, 9040, 9080} << Times{0, 40, 9040, 9080}
                                  << Times{0, 40, 9040, 9080};
    QTest::newRow("run at a tenth") << Times{0, 600, 1200, 1201} << Times{0, 6000, 12'000, 12'040}
                                    << Times{0, 600, 6600, 6601};
    QTest::newRow("none at all") << Times{-1, -1, -1} << Times{0, 40, 90} << Times{0, 40, 90};
}

void tst_packets::liveTimesFollowTheirArrival()
{
    QFETCH(QVector<qint64>, own);
    QFETCH(QVector<qint64>, came);
    const AvParameters parameters(avcodec_parameters_alloc());
    PacketStamper stamper(StreamFormat::of(*parameters, {1, 1000}, nullptr));
    QVector<qint64> stamped;
    for (int i = 0; i < own.size(); ++i) {
        const AvPacket packet(av_packet_alloc());
        packet->pts = packet->dts = own[i] < 0 ? AV_NOPTS_VALUE : own[i];
        stamped.append(stamper.stamp(*packet, {came[i] * 1000, StartMs + came[i], {}})->packet->dts);
    }
    QTEST(stamped, "stamped");
}

void tst_packets::tellsWhenPicturesWereTaken()
{
    PacketClock clock;
    const auto at = [&clock](qint64 ownMs, qint64 cameMs, std::optional<qint64> senderMs = {}) {
        return clock.wallMs(ownMs * 1000, {cameMs * 1000, StartMs + cameMs, senderMs}) - StartMs;
    };
    QCOMPARE(at(0, 100), qint64(100));
    // What came early tells that the others came late.
    QCOMPARE(at(40, 110), qint64(110));
    QCOMPARE(at(80, 400), qint64(150));
    QCOMPARE(at(120, 190), qint64(190));
    // The machine's clock was set, or the stream's.
    QCOMPARE(at(160, 3'600'230), qint64(3'600'230));
    QCOMPARE(at(200, 3'600'270), qint64(3'600'270));
    // The sender knows best, unless its clock was never set.
    QCOMPARE(at(240, 3'600'310, StartMs + 3'600'290), qint64(3'600'290));
    QCOMPARE(at(280, 3'600'350, StartMs - 900'000), qint64(3'600'350));
}

void tst_packets::knowsWhetherPicturesKeepOrder_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<bool>("isKept");
    const QByteArray told = "67640014acd94141fb016a02040280000003008000000c3020007a12000f425259403c50a960";
    const QByteArray other = "68ce3880000001";
    QTest::newRow("order of packets")
        << QByteArray("6764000cacb20283f602dc080805000003000100000300180f142a48") << true;
    QTest::newRow("a simple profile that tells nothing") << QByteArray("6742c01fda014016e4") << true;
    QTest::newRow("none held back") << told << true;
    QTest::newRow("behind another unit") << other + told << true;
    QTest::newRow("cut short") << told.chopped(4) << false;
    QTest::newRow("some held back") << QByteArray(told).replace("50a960", "50a658") << false;
    QTest::newRow("tells nothing") << QByteArray("674d401feca02802dc80") << false;
    QTest::newRow("none") << other << false;
    QTest::newRow("nonsense") << "67" + QByteArray(80, '0') << false;
}

void tst_packets::knowsWhetherPicturesKeepOrder()
{
    QFETCH(QByteArray, header);
    const AvParameters stream(avcodec_parameters_alloc());
    stream->codec_id = AV_CODEC_ID_H264;
    QVERIFY(!PictureOrder::isKept(*stream));
    const QByteArray bytes = QByteArray::fromHex("00000001" + header);
    stream->extradata = static_cast<uint8_t*>(av_memdup(bytes.constData(), size_t(bytes.size())));
    stream->extradata_size = bytes.size();
    QTEST(PictureOrder::isKept(*stream), "isKept");
}

int main(int argc, char** argv)
{
    return RunTests<tst_packets, QCoreApplication>(argc, argv);
}

#include "tst_packets.moc"
