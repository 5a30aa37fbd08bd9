#include "panel/XrefBulkRepathDialog.h"

#include "framework/ZuUiTheme.h"
#include "host/KvUiFolderBrowser.h"

#include <QAbstractTableModel>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTableView>
#include <QThread>
#include <QVBoxLayout>

#include <algorithm>
#include <atomic>

namespace {

// Files are looked for in batches of this many: small enough that the table fills in visibly on
// a slow share, large enough that a local disk is not slowed down by the hand-over.
constexpr int kBatch = 256;

enum Column { NameColumn, OldPathColumn, NewPathColumn, ExistsColumn, ColumnCount };

class PreviewModel : public QAbstractTableModel
{
public:
    explicit PreviewModel(const CXrefRepathPlan& plan, QObject* parent)
        : QAbstractTableModel(parent), m_plan(plan)
    {}

    void Reset()
    {
        beginResetModel();
        endResetModel();
    }
    void ExistsChanged(int first, int last)
    {
        emit dataChanged(index(first, ExistsColumn), index(last, ExistsColumn));
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_plan.Entries().size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        switch (section) {
        case NameColumn:
            return QStringLiteral("Reference");
        case OldPathColumn:
            return QStringLiteral("Saved path");
        case NewPathColumn:
            return QStringLiteral("New path");
        case ExistsColumn:
            return QStringLiteral("New file");
        default:
            return {};
        }
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || std::size_t(index.row()) >= m_plan.Entries().size())
            return {};
        const CXrefRepathPlan::Entry& entry = m_plan.Entries()[std::size_t(index.row())];
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
            switch (index.column()) {
            case NameColumn:
                return entry.name;
            case OldPathColumn:
                return entry.oldPath;
            case NewPathColumn:
                return entry.newPath;
            case ExistsColumn:
                if (role == Qt::ToolTipRole)
                    return m_plan.ResolvedPath(entry.newPath);
                return entry.exists == CXrefRepathPlan::Exists::Yes  ? QStringLiteral("Found")
                       : entry.exists == CXrefRepathPlan::Exists::No ? QStringLiteral("Not found")
                                                                     : QStringLiteral("Looking...");
            default:
                return {};
            }
        }
        if (role == Qt::ForegroundRole && index.column() == ExistsColumn &&
            entry.exists == CXrefRepathPlan::Exists::No)
            return CZuUiTheme::Instance().IsDarkTheme() ? QColor(255, 138, 128)
                                                        : QColor(179, 38, 30);
        return {};
    }

private:
    const CXrefRepathPlan& m_plan;
};

} // namespace

class CXrefBulkRepathDialogPrivate
{
public:
    CXrefBulkRepathDialogPrivate(CXrefBulkRepathDialog& q,
                                 const std::vector<CXrefPanelCtrlItem*>& items)
        : q(q), plan(items)
    {}
    ~CXrefBulkRepathDialogPrivate() { stopCheck(); }

    void build();
    void recompute();
    void startCheck();
    void stopCheck();
    void applyBatch(int generation, const std::vector<int>& indices, const QStringList& paths,
                    const std::vector<char>& found, bool last);
    void updateSummary();
    void browse();

    CXrefBulkRepathDialog& q;
    CXrefRepathPlan plan;
    PreviewModel* model = nullptr;
    QRadioButton* findMode = nullptr;
    QRadioButton* folderMode = nullptr;
    QStackedWidget* pages = nullptr;
    QLineEdit* find = nullptr;
    QLineEdit* replace = nullptr;
    QCheckBox* matchCase = nullptr;
    QLineEdit* folder = nullptr;
    QLabel* summary = nullptr;
    QTableView* table = nullptr;
    QPushButton* ok = nullptr;

    // What was found stays known while the user types: most keystrokes ask for the same files.
    QHash<QString, bool> known;
    std::unique_ptr<QThread> worker;
    std::shared_ptr<std::atomic<bool>> cancel;
    int generation = 0;
    bool checking = false;
};

void CXrefBulkRepathDialogPrivate::build()
{
    q.setWindowTitle(QStringLiteral("Change Saved Paths"));
    q.setPalette(CZuUiTheme::Instance().Palette());

    findMode = new QRadioButton(QStringLiteral("&Find and replace"), &q);
    folderMode = new QRadioButton(QStringLiteral("&Select new path"), &q);
    auto* modes = new QButtonGroup(&q);
    modes->addButton(findMode);
    modes->addButton(folderMode);
    findMode->setChecked(true);
    auto* modeRow = new QHBoxLayout;
    modeRow->addWidget(findMode);
    modeRow->addWidget(folderMode);
    modeRow->addStretch();

    pages = new QStackedWidget(&q);
    auto* findPage = new QWidget(pages);
    auto* findForm = new QFormLayout(findPage);
    findForm->setContentsMargins(0, 0, 0, 0);
    find = new QLineEdit(findPage);
    replace = new QLineEdit(findPage);
    matchCase = new QCheckBox(QStringLiteral("Match &case"), findPage);
    findForm->addRow(QStringLiteral("F&ind:"), find);
    findForm->addRow(QStringLiteral("&Replace with:"), replace);
    findForm->addRow(QString(), matchCase);
    pages->addWidget(findPage);

    auto* folderPage = new QWidget(pages);
    auto* folderForm = new QFormLayout(folderPage);
    folderForm->setContentsMargins(0, 0, 0, 0);
    folder = new QLineEdit(folderPage);
    folder->setPlaceholderText(QStringLiteral("Each reference keeps its file name"));
    auto* browseButton = new QPushButton(QStringLiteral("&Browse..."), folderPage);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(folder, 1);
    folderRow->addWidget(browseButton);
    folderForm->addRow(QStringLiteral("New &folder:"), folderRow);
    // The label stands beside a row, not the field, so it names the field for nobody.
    folder->setAccessibleName(QStringLiteral("New folder"));
    pages->addWidget(folderPage);

    summary = new QLabel(&q);
    summary->setWordWrap(true);

    model = new PreviewModel(plan, &q);
    table = new QTableView(&q);
    table->setModel(model);
    table->setAccessibleName(QStringLiteral("New paths"));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideMiddle);
    table->verticalHeader()->hide();
    // Fixed row heights and column widths: nothing is measured per row, whatever the count.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    table->horizontalHeader()->setSectionResizeMode(NewPathColumn, QHeaderView::Stretch);
    table->setColumnWidth(NameColumn, 150);
    table->setColumnWidth(OldPathColumn, 260);
    table->setColumnWidth(ExistsColumn, 90);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &q);
    ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(QStringLiteral("Change Paths"));

    auto* layout = new QVBoxLayout(&q);
    layout->addLayout(modeRow);
    layout->addWidget(pages);
    layout->addWidget(summary);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    q.resize(820, 460);

    QObject::connect(buttons, &QDialogButtonBox::accepted, &q, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &q, &QDialog::reject);
    QObject::connect(findMode, &QRadioButton::toggled, &q, [this](bool on) {
        pages->setCurrentIndex(on ? 0 : 1);
        recompute();
    });
    QObject::connect(find, &QLineEdit::textChanged, &q, [this] { recompute(); });
    QObject::connect(replace, &QLineEdit::textChanged, &q, [this] { recompute(); });
    QObject::connect(matchCase, &QCheckBox::toggled, &q, [this] { recompute(); });
    QObject::connect(folder, &QLineEdit::textChanged, &q, [this] { recompute(); });
    QObject::connect(browseButton, &QPushButton::clicked, &q, [this] { browse(); });
}

void CXrefBulkRepathDialogPrivate::recompute()
{
    if (findMode->isChecked())
        plan.FindAndReplace(find->text(), replace->text(),
                            matchCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive);
    else
        plan.SelectNewFolder(folder->text().trimmed());
    model->Reset();
    ok->setEnabled(!plan.Entries().empty());
    startCheck();
    emit q.PlanChanged();
}

void CXrefBulkRepathDialogPrivate::stopCheck()
{
    if (cancel)
        *cancel = true;
    // The worker stops after the file it is looking at; waiting here means no batch of an old
    // plan can arrive after the dialog is gone.
    if (worker)
        worker->wait();
    worker.reset();
    cancel.reset();
    checking = false;
}

void CXrefBulkRepathDialogPrivate::startCheck()
{
    stopCheck();
    ++generation;
    std::vector<int> indices;
    QStringList paths;
    const auto& entries = plan.Entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const QString path = plan.ResolvedPath(entries[i].newPath);
        const auto found = known.constFind(path);
        if (found != known.constEnd()) {
            plan.SetExists(i, *found);
        } else {
            indices.push_back(int(i));
            paths.push_back(path);
        }
    }
    if (paths.isEmpty()) {
        updateSummary();
        emit q.CheckFinished();
        return;
    }
    checking = true;
    updateSummary();
    cancel = std::make_shared<std::atomic<bool>>(false);
    worker.reset(QThread::create([this, stop = cancel, generation = generation,
                                  indices = std::move(indices), paths = std::move(paths)] {
        for (int first = 0; first < paths.size() && !*stop; first += kBatch) {
            const int last = std::min(int(paths.size()), first + kBatch);
            std::vector<char> found;
            found.reserve(std::size_t(last - first));
            for (int i = first; i < last && !*stop; ++i) {
                const QFileInfo file(paths[i]);
                found.push_back(file.exists() && !file.isDir());
            }
            if (*stop)
                return;
            std::vector<int> batchIndices(indices.begin() + first, indices.begin() + last);
            QStringList batchPaths = paths.mid(first, last - first);
            QMetaObject::invokeMethod(
                &q,
                [this, generation, batchIndices = std::move(batchIndices),
                 batchPaths = std::move(batchPaths), found = std::move(found),
                 done = last == paths.size()] {
                    applyBatch(generation, batchIndices, batchPaths, found, done);
                },
                Qt::QueuedConnection);
        }
    }));
    worker->start();
}

void CXrefBulkRepathDialogPrivate::applyBatch(int batchGeneration, const std::vector<int>& indices,
                                              const QStringList& paths,
                                              const std::vector<char>& found, bool last)
{
    for (std::size_t i = 0; i < found.size(); ++i)
        known.insert(paths[int(i)], found[i] != 0);
    // A batch of a plan the user has since changed only feeds what is known.
    if (batchGeneration != generation)
        return;
    for (std::size_t i = 0; i < found.size(); ++i)
        plan.SetExists(std::size_t(indices[i]), found[i] != 0);
    if (!indices.empty())
        model->ExistsChanged(indices.front(), indices.back());
    if (last)
        checking = false;
    updateSummary();
    if (last)
        emit q.CheckFinished();
}

void CXrefBulkRepathDialogPrivate::updateSummary()
{
    const int changes = int(plan.Entries().size());
    const int total = int(plan.Sources().size());
    if (changes == 0) {
        summary->setText(total == 0
                             ? QStringLiteral("There are no references to change.")
                             : QStringLiteral("No saved path changes (%1 references).").arg(total));
        return;
    }
    QString text = QStringLiteral("%1 of %2 saved paths change.").arg(changes).arg(total);
    if (checking)
        text += QStringLiteral(" Looking for the new files...");
    else if (const int missing = plan.MissingCount(); missing > 0)
        text += missing == 1 ? QStringLiteral(" 1 new file is not there.")
                             : QStringLiteral(" %1 new files are not there.").arg(missing);
    else
        text += QStringLiteral(" Every new file is there.");
    summary->setText(text);
}

void CXrefBulkRepathDialogPrivate::browse()
{
    CKvUiFolderBrowser browser(&q);
    browser.SetCaption(QStringLiteral("Select New Path"));
    const QString current = folder->text().trimmed();
    browser.SetStartFolder(current.isEmpty() ? plan.BaseFolder() : plan.ResolvedPath(current));
    if (browser.DoModal() && !browser.SelectedFolder().isEmpty())
        folder->setText(QDir::toNativeSeparators(browser.SelectedFolder()));
}

CXrefBulkRepathDialog::CXrefBulkRepathDialog(const std::vector<CXrefPanelCtrlItem*>& items,
                                             const QString& baseFolder, QWidget* parent)
    : QDialog(parent), d(std::make_unique<CXrefBulkRepathDialogPrivate>(*this, items))
{
    d->plan.SetBaseFolder(baseFolder);
    d->build();
    d->recompute();
}

CXrefBulkRepathDialog::~CXrefBulkRepathDialog()
{
    d->stopCheck();
    // The model reads the plan, which goes with d before the dialog's children do.
    d->table->setModel(nullptr);
}

void CXrefBulkRepathDialog::SetMode(Mode mode)
{
    (mode == Mode::FindAndReplace ? d->findMode : d->folderMode)->setChecked(true);
}

CXrefBulkRepathDialog::Mode CXrefBulkRepathDialog::GetMode() const
{
    return d->findMode->isChecked() ? Mode::FindAndReplace : Mode::NewFolder;
}

void CXrefBulkRepathDialog::SetFindText(const QString& text)
{
    d->find->setText(text);
}

void CXrefBulkRepathDialog::SetReplaceText(const QString& text)
{
    d->replace->setText(text);
}

void CXrefBulkRepathDialog::SetMatchCase(bool matchCase)
{
    d->matchCase->setChecked(matchCase);
}

void CXrefBulkRepathDialog::SetFolder(const QString& folder)
{
    d->folder->setText(folder);
}

const std::vector<CXrefRepathPlan::Entry>& CXrefBulkRepathDialog::Plan() const
{
    return d->plan.Entries();
}

bool CXrefBulkRepathDialog::IsChecking() const
{
    return d->checking;
}

QTableView* CXrefBulkRepathDialog::PreviewTable() const
{
    return d->table;
}
