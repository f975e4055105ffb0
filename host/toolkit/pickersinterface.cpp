#include "pickersinterface.h"

#include "pickerdlg.h"

#include "bparser.h"
#include "dictionaryservice.h"
#include "examcodemodifierdataset.h"
#include "examcoderecord.h"
#include "locationdataset.h"
#include "performingresourcedataset.h"
#include "providercollection.h"
#include "providerrecord.h"
#include "providerservice.h"
#include "queryexamcodemodifiersrequestfacade.h"
#include "queryexamcodesrequestfacade.h"
#include "querylocationdatarequestfacade.h"
#include "serviceregistry.h"
#include "session.h"

#include <ace/Log_Msg.h>

#include <exception>
#include <functional>
#include <memory>

namespace {

const char* const kUnreadable = "The list could not be read from the archive. Try again in a moment.";

DictionaryService* Dictionaries()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetDictionaryService() : nullptr;
}

ACE_CString Param(const PickersInterface::ParamMap& params, const char* name)
{
    const auto it = params.find(name);
    return it == params.end() ? ACE_CString() : it->second;
}

CString Text(const ACE_CString& s) { return CString(s.c_str()); }
ACE_CString Ace(const CString& s) { return ACE_CString(s.GetString()); }

void LogFailure(const char* source, const char* what)
{
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(__LINE__);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the picker's search failed: %s\n"), source, __LINE__,
               what));
}

// A source over one query: rows are the records the last search returned
// (owned), shown through a row function.
template <class Record>
class QuerySource : public PickerSource
{
public:
    using Query = std::function<int(const ACE_CString& pattern, std::vector<Record*>& out)>;
    using Row = std::function<std::vector<CString>(const Record&)>;

    QuerySource(CString caption, std::vector<Column> columns, Query query, Row row, bool several = false)
        : m_caption(std::move(caption)), m_columns(std::move(columns)), m_query(std::move(query)),
          m_row(std::move(row)), m_several(several)
    {
    }

    CString Caption() const override { return m_caption; }
    std::vector<Column> Columns() const override { return m_columns; }
    bool AllowsSeveral() const override { return m_several; }
    int Count() const override { return static_cast<int>(m_records.size()); }
    std::vector<CString> RowTexts(int row) const override { return m_row(*m_records[row]); }
    const Record& At(int row) const { return *m_records[row]; }

    CString Search(const CString& text) override
    {
        m_records.clear();
        std::vector<Record*> found;
        int rc = 0;
        try {
            rc = m_query(PickersInterface::PrefixPattern(Ace(text)), found);
        } catch (const std::exception& e) {
            LogFailure(m_caption.GetString(), e.what());
            rc = -1;
        }
        for (Record* r : found)
            m_records.emplace_back(r);
        return rc == 0 ? CString() : NoteFor(rc);
    }

    std::function<CString(int)> NoteFor = [](int) { return CString(kUnreadable); };

private:
    CString m_caption;
    std::vector<Column> m_columns;
    Query m_query;
    Row m_row;
    bool m_several;
    std::vector<std::unique_ptr<Record>> m_records;
};

// Runs the chooser; copies what was taken into chosen.
template <class Record, class Out>
bool Run(QuerySource<Record>& source, const CString& start, CWnd* owner, std::vector<Out*>& chosen)
{
    PickerDlg dlg(source, start, owner);
    if (dlg.DoModal() != IDOK || dlg.GetChosenRows().empty())
        return false;
    for (int row : dlg.GetChosenRows())
        chosen.push_back(new Out(source.At(row)));
    return true;
}

// "Last, First" as the two name prefixes a provider query takes.
void SplitName(const ACE_CString& text, ACE_CString& last, ACE_CString& first)
{
    CString all = Text(text);
    const int comma = all.Find(',');
    CString l = comma < 0 ? all : all.Left(comma);
    CString f = comma < 0 ? CString() : all.Mid(comma + 1);
    l.Trim();
    f.Trim();
    last = Ace(l);
    first = Ace(f);
}

CString ProviderName(const ProviderRecord& p)
{
    const BPersonName& n = p.GetName();
    CString name = Text(n.GetLastName());
    if (n.GetFirstName().length())
        name += CString(", ") + Text(n.GetFirstName());
    return name;
}

} // namespace

ACE_CString PickersInterface::PrefixPattern(const ACE_CString& text)
{
    std::string out;
    for (size_t i = 0; i < text.length(); ++i) {
        const char c = text.c_str()[i];
        if (c == '%' || c == '_' || c == '\\')
            out += '\\';
        out += c;
    }
    out += '%';
    return ACE_CString(out.c_str());
}

bool PickersInterface::SelectExamCodes(const ParamMap& params, CWnd* owner, std::vector<ExamCodeRecord*>& chosen)
{
    const ACE_CString org = Param(params, QueryExamCodesRequestFacade::OrgKeyParamName());
    QuerySource<ExamCodeRecord> source(
        "Select Exam Code",
        {Column("Exam Code", 0.2), Column("Description", 0.5), Column("Modality", 0.12), Column("Body Part", 0.18)},
        [org](const ACE_CString& pattern, std::vector<ExamCodeRecord*>& out) {
            DictionaryService* d = Dictionaries();
            QueryExamCodesRequestFacade request;
            request.SetOrganizationKey(org);
            request.SetExamCode(pattern);
            return d ? d->QueryExamCodes(request, out) : -1;
        },
        [](const ExamCodeRecord& r) -> std::vector<CString> {
            return {Text(r.GetCode()), Text(r.GetDescription()), Text(r.GetModality()), Text(r.GetBodyPart())};
        });
    return Run(source, Text(Param(params, QueryExamCodesRequestFacade::ExamCodeParamName())), owner, chosen);
}

bool PickersInterface::SelectExamCodeModifiers(const ParamMap& params, CWnd* owner,
                                               std::vector<ExamCodeModifierDataSet*>& chosen)
{
    const ACE_CString org = Param(params, QueryExamCodeModifiersRequestFacade::OrgKeyParamName());
    QuerySource<ExamCodeModifierDataSet> source(
        "Select Exam Code Modifiers", {Column("Modifier", 0.3), Column("Description", 0.7)},
        [org](const ACE_CString& pattern, std::vector<ExamCodeModifierDataSet*>& out) {
            DictionaryService* d = Dictionaries();
            QueryExamCodeModifiersRequestFacade request;
            request.SetOrganizationKey(org);
            request.SetCode(pattern);
            return d ? d->QueryExamCodeModifiers(request, out) : -1;
        },
        [](const ExamCodeModifierDataSet& r) -> std::vector<CString> {
            return {Text(r.GetCode()), Text(r.GetDescription())};
        },
        true);
    return Run(source, Text(Param(params, QueryExamCodeModifiersRequestFacade::CodeParamName())), owner, chosen);
}

bool PickersInterface::SelectOrderingLocation(CWnd* owner, const LocationDataSet* current,
                                              std::vector<LocationDataSet*>& chosen)
{
    const ACE_CString org = current ? current->GetOrganizationKey() : ACE_CString();
    QuerySource<LocationDataSet> source(
        "Select Ordering Location", {Column("Location", 0.3), Column("Description", 0.7)},
        [org](const ACE_CString& pattern, std::vector<LocationDataSet*>& out) {
            DictionaryService* d = Dictionaries();
            QueryLocationDataRequestFacade request;
            request.SetOrganizationKey(org);
            request.SetLocationId(pattern);
            return d ? d->QueryLocationData(request, out, true) : -1;
        },
        [](const LocationDataSet& r) -> std::vector<CString> { return {Text(r.GetLocationId()), Text(r.GetName())}; });
    return Run(source, current ? Text(current->GetLocationId()) : CString(), owner, chosen);
}

bool PickersInterface::SelectPerformingResources(CWnd* owner, const PerformingResourceDataSet* current,
                                                 std::vector<PerformingResourceDataSet*>& chosen)
{
    const ACE_CString org = current ? current->GetOrganizationKey() : ACE_CString();
    QuerySource<PerformingResourceDataSet> source(
        "Select Performing Resource",
        {Column("Resource", 0.25), Column("Description", 0.55), Column("Modality", 0.2)},
        [org](const ACE_CString& pattern, std::vector<PerformingResourceDataSet*>& out) {
            DictionaryService* d = Dictionaries();
            PerformingResourceDataSet query;
            query.SetAll();
            query.SetOrganizationKey(org);
            query.SetResourceId(pattern);
            return d ? d->QueryPerformingResources(&query, out) : -1;
        },
        [](const PerformingResourceDataSet& r) -> std::vector<CString> {
            return {Text(r.GetResourceId()), Text(r.GetName()), Text(r.GetModality())};
        });
    return Run(source, current ? Text(current->GetResourceId()) : CString(), owner, chosen);
}

bool PickersInterface::SelectProviders(CWnd* owner, ProviderCollection* collection,
                                       std::vector<ProviderRecord*>& chosen)
{
    const ProviderRecord* tpl = collection ? collection->GetTemplate() : nullptr;
    const ACE_CString org = tpl ? tpl->GetOrganizationKey() : ACE_CString();
    QuerySource<ProviderRecord> source(
        "Select Referring Physician",
        {Column("Name", 0.34), Column("ID", 0.16), Column("City", 0.25), Column("Work Phone", 0.25)},
        [org](const ACE_CString& pattern, std::vector<ProviderRecord*>& out) {
            ServiceRegistry* registry = Session::ServiceInstance();
            ProviderService* providers = registry ? registry->GetProviderService() : nullptr;
            if (!providers)
                return -1;
            // The pattern is "text%": the provider query takes plain name prefixes.
            std::string text(pattern.c_str(), pattern.length() - 1);
            std::string plain;
            for (size_t i = 0; i < text.size(); ++i)
                plain += (text[i] == '\\' && i + 1 < text.size()) ? text[++i] : text[i];
            ACE_CString last, first;
            SplitName(ACE_CString(plain.c_str()), last, first);
            ProviderRecord query;
            query.SetOrganizationKey(org);
            BPersonName name;
            name.SetLastName(last);
            name.SetFirstName(first);
            query.SetName(name);
            ProviderCollection found(&query);
            const int rc = providers->QueryProviders(&found);
            for (ProviderRecord* p : found.GetProviders())
                out.push_back(new ProviderRecord(*p));
            return rc;
        },
        [](const ProviderRecord& r) -> std::vector<CString> {
            return {ProviderName(r), Text(r.GetProviderID()), Text(r.GetAddress().GetCity()), Text(r.GetWorkPhone())};
        });
    source.NoteFor = [](int rc) {
        return rc == ProviderService::TOO_MANY_MATCHES
                   ? CString("Too many physicians match. Type more of the name (Last, First).")
                   : CString(kUnreadable);
    };
    CString start;
    if (tpl) {
        start = Text(tpl->GetName().GetLastName());
        if (tpl->GetName().GetFirstName().length())
            start += CString(", ") + Text(tpl->GetName().GetFirstName());
    }
    return Run(source, start, owner, chosen);
}
