#include "playback/ExportDialog.h"

#include "archive/DiskRoom.h"
#include "common/EngineText.h"
#include "common/UserFiles.h"
#include "common/Words.h"
#include "playback/BurntCaption.h"
#include "playback/ExportText.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTimerEvent>
#include <QUrl>

namespace {

constexpr char DirectoryKey[] = "playback/exportDirectory";
constexpr char ContainerKey[] = "playback/exportContainer";
/// While somebody turns the fields nothing is looked up.
constexpr int PlanMs = 200;
constexpr int Permille = 1000;
constexpr int CameraRows = 5;
constexpr int LeastWidth = 440;

/// What an encoded picture takes, bytes in a millisecond.
constexpr qint64 EncodedBytes = PictureExport::BitsPerSecond / 8 / 1000;

QString lastDirectory()
{
    const QString kept = QSettings().value(DirectoryKey).toString();
    return QDir(kept).exists() && !kept.isEmpty() ? kept : UserFiles::directory(UserFiles::Kind::Recording);
}

} // namespace

ExportDialog::ExportDialog(const ClientArchive* archive, const Choice& choice, QWidget* parent)
    : QDialog(parent), m_archive(archive)
{
    setObjectName("ExportDialog");
    setWindowTitle(word("Export recordings"));
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumWidth(LeastWidth);
    layOut(choice);
    connect(&m_exporter, &RecordingExporter::progressed, m_progress, &QProgressBar::setValue);
    connect(&m_exporter, &RecordingExporter::finished, this, &ExportDialog::end);
    plan();
}

void ExportDialog::layOut(const Choice& choice)
{
    m_from = makeTime("ExportFrom", choice.fromMs);
    m_to = makeTime("ExportTo", choice.toMs);
    m_cameras = new QListWidget;
    m_cameras->setObjectName("ExportCameras");
    for (const QString& camera : choice.cameras) {
        auto* item = new QListWidgetItem(camera, m_cameras);
        item->setCheckState(choice.chosen.contains(camera) ? Qt::Checked : Qt::Unchecked);
    }
    m_cameras->setFixedHeight(CameraRows * m_cameras->fontMetrics().lineSpacing() * 3 / 2);
    connect(m_cameras, &QListWidget::itemChanged, this, &ExportDialog::planLater);
    m_container = new QComboBox;
    m_container->setObjectName("ExportFormat");
    m_container->addItems({"MP4", "Matroska (MKV)", word("One picture with names and times (MP4)")});
    m_container->setCurrentIndex(
        qBound(0, QSettings().value(ContainerKey).toInt(), int(ExportText::OnePicture)));
    connect(m_container, qOverload<int>(&QComboBox::currentIndexChanged), this, &ExportDialog::planLater);

    m_fields = new QWidget;
    auto* form = new QFormLayout(m_fields);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(word("From"), m_from);
    form->addRow(word("To"), m_to);
    form->addRow(word("Cameras"), m_cameras);
    form->addRow(word("Format"), m_container);
    form->addRow(word("Folder"), makeDirectoryRow());

    m_note = new QLabel;
    m_note->setObjectName("ExportNote");
    m_note->setWordWrap(true);
    m_note->setMinimumHeight(4 * m_note->fontMetrics().lineSpacing());
    m_note->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    m_note->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_progress = new QProgressBar;
    m_progress->setAccessibleName(word("Progress"));
    m_progress->setRange(0, Permille);
    auto* buttons = new QDialogButtonBox;
    m_export = buttons->addButton(word("Export"), QDialogButtonBox::ActionRole);
    m_export->setObjectName("ExportBegin");
    m_export->setDefault(true);
    m_open = buttons->addButton(word("Open folder"), QDialogButtonBox::ActionRole);
    m_open->setObjectName("ExportOpen");
    m_open->setEnabled(false);
    connect(m_open, &QPushButton::clicked, this,
            [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(m_directory->text())); });
    m_close = buttons->addButton(word("Close"), QDialogButtonBox::RejectRole);
    m_close->setObjectName("ExportClose");
    connect(m_export, &QPushButton::clicked, this, &ExportDialog::begin);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
    auto* column = new QVBoxLayout(this);
    for (QWidget* part : {m_fields, static_cast<QWidget*>(m_note), static_cast<QWidget*>(m_progress),
                          static_cast<QWidget*>(buttons)})
        column->addWidget(part);
}

QDateTimeEdit* ExportDialog::makeTime(const QString& name, qint64 ms)
{
    auto* field = new QDateTimeEdit(QDateTime::fromMSecsSinceEpoch(ms));
    field->setObjectName(name);
    field->setLayoutDirection(Qt::LeftToRight); // else the format below turns round
    field->setDisplayFormat("yyyy-MM-dd HH:mm:ss");
    field->setCurrentSection(QDateTimeEdit::SecondSection);
    connect(field, &QDateTimeEdit::dateTimeChanged, this, [this] {
        planLater();
        Q_EMIT stretchChanged(m_from->dateTime().toMSecsSinceEpoch(), m_to->dateTime().toMSecsSinceEpoch());
    });
    return field;
}

QWidget* ExportDialog::makeDirectoryRow()
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_directory = new QLineEdit(lastDirectory());
    m_directory->setObjectName("ExportFolder");
    m_directory->setAccessibleName(word("Folder"));
    connect(m_directory, &QLineEdit::textChanged, this, &ExportDialog::planLater);
    auto* browse = new QPushButton(word("Choose…"));
    connect(browse, &QPushButton::clicked, this, &ExportDialog::chooseDirectory);
    layout->addWidget(m_directory, 1);
    layout->addWidget(browse);
    return row;
}

void ExportDialog::chooseDirectory()
{
    const QString path = QFileDialog::getExistingDirectory(this, word("Folder"), m_directory->text());
    if (!path.isEmpty())
        m_directory->setText(path);
}

void ExportDialog::setStretch(qint64 fromMs, qint64 toMs)
{
    if (m_isRunning)
        return;
    const QSignalBlocker fromBlocker(m_from), toBlocker(m_to);
    m_from->setDateTime(QDateTime::fromMSecsSinceEpoch(fromMs));
    m_to->setDateTime(QDateTime::fromMSecsSinceEpoch(toMs));
    planLater();
}

void ExportDialog::planLater()
{
    if (m_planTimer == 0 && !m_isRunning)
        m_planTimer = startTimer(PlanMs);
}

void ExportDialog::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_planTimer)
        return;
    killTimer(std::exchange(m_planTimer, 0));
    if (!m_isRunning)
        plan();
}

QStringList ExportDialog::chosen() const
{
    QStringList names;
    for (int row = 0; row < m_cameras->count(); ++row) {
        if (m_cameras->item(row)->checkState() == Qt::Checked)
            names.append(m_cameras->item(row)->text());
    }
    return names;
}

void ExportDialog::plan()
{
    const qint64 from = m_from->dateTime().toMSecsSinceEpoch();
    const qint64 to = m_to->dateTime().toMSecsSinceEpoch();
    m_plan = ExportPlan::of(*m_archive, chosen(), from, to);
    if (m_container->currentIndex() == ExportText::OnePicture)
        m_plan.bytes = qMax<qint64>(0, to - from) * EncodedBytes;
    const bool hasRoom = m_plan.bytes < DiskRoom::of(m_directory->text()).free;
    if (from >= to)
        m_note->setText(word("The end lies before the beginning."));
    else if (m_plan.tasks.isEmpty())
        m_note->setText(word("Nothing is recorded there."));
    else
        m_note->setText(sizes());
    m_export->setEnabled(!m_plan.tasks.isEmpty() && hasRoom);
}

/// What it takes and what there is.
QString ExportDialog::sizes() const
{
    const DiskRoom room = DiskRoom::of(m_directory->text());
    if (room.total == 0)
        return word("There is no such folder.");
    QStringList lines{
        word("About %1; free: %2").arg(ExportText::size(m_plan.bytes), ExportText::size(room.free))};
    if (m_plan.bytes >= room.free)
        lines.append(word("There is not enough room."));
    if (!m_plan.without.isEmpty())
        lines.append(word("Nothing is recorded of: %1").arg(m_plan.without.join(", ")));
    lines.append(ExportText::format(m_container->currentIndex()));
    return lines.join('\n');
}

void ExportDialog::begin()
{
    plan();
    if (!m_export->isEnabled() || m_isRunning)
        return;
    QSettings settings;
    settings.setValue(DirectoryKey, m_directory->text());
    settings.setValue(ContainerKey, m_container->currentIndex());
    const int format = m_container->currentIndex();
    ExportOrder order{m_plan.tasks,
                      format == ExportText::Matroska ? ClipMuxer::Container::Matroska
                                                     : ClipMuxer::Container::Mp4,
                      QDir(m_directory->text()).absolutePath(),
                      {}};
    if (format == ExportText::OnePicture)
        order.painter = paintBurntCaption;
    setRunning(true);
    m_exporter.start(order);
}

void ExportDialog::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
    m_fields->setEnabled(!isRunning);
    m_export->setEnabled(!isRunning);
    m_close->setText(isRunning ? word("Cancel") : word("Close"));
    if (isRunning)
        m_note->setText(word("Exporting…"));
}

void ExportDialog::end(const ExportResult& result)
{
    setRunning(false);
    m_open->setEnabled(m_open->isEnabled() || !result.files.isEmpty());
    m_progress->setValue(result.files.isEmpty() ? 0 : Permille);
    for (const QString& path : result.files)
        Q_EMIT told(word("exported: %1").arg(path));
    if (!result.files.isEmpty())
        m_note->setText(QStringList{word("Files exported: %1").arg(result.files.size()),
                                    QFileInfo(result.checksums).fileName(),
                                    ExportText::remarks(result.remarks)}
                            .join('\n'));
    else if (result.error.isEmpty())
        m_note->setText(word("Cancelled; nothing was written."));
    else
        m_note->setText(word("Nothing was exported: %1").arg(engineText(result.error)));
    if (result.files.isEmpty())
        Q_EMIT told(m_note->text());
}

void ExportDialog::reject()
{
    if (m_isRunning)
        m_exporter.cancel();
    else
        QDialog::reject();
}
