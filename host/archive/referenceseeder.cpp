#include "referenceseeder.h"

#include "archivedb.h"
#include "keygenerator.h"

#include <SQLiteCpp/Statement.h>

#include <cstdio>
#include <string>

namespace {

struct Modality { const char* code; const char* name; };
const Modality kModalities[] = {{"CT", "CT"}, {"MR", "MR"}, {"US", "US"}, {"CR", "XR"}, {"DX", "DX"},
                                {"NM", "NM"}, {"PT", "PET"}, {"RF", "FL"}, {"XA", "ANGIO"}, {"MG", "MAMMO"}};

struct BodyPart { const char* code; const char* name; };
const BodyPart kBodyParts[] = {
    {"HEAD", "HEAD"}, {"BRAIN", "BRAIN"}, {"FACE", "FACIAL BONES"}, {"ORBIT", "ORBITS"}, {"SINUS", "SINUSES"},
    {"NECK", "NECK"}, {"CSPINE", "CERVICAL SPINE"}, {"TSPINE", "THORACIC SPINE"}, {"LSPINE", "LUMBAR SPINE"},
    {"CHEST", "CHEST"}, {"HEART", "HEART"}, {"ABDOMEN", "ABDOMEN"}, {"PELVIS", "PELVIS"}, {"KIDNEY", "KIDNEYS"},
    {"LIVER", "LIVER"}, {"SHOULDER", "SHOULDER"}, {"HUMERUS", "HUMERUS"}, {"ELBOW", "ELBOW"},
    {"FOREARM", "FOREARM"}, {"WRIST", "WRIST"}, {"HAND", "HAND"}, {"HIP", "HIP"}, {"FEMUR", "FEMUR"},
    {"KNEE", "KNEE"}, {"TIBIA", "TIBIA AND FIBULA"}, {"ANKLE", "ANKLE"}, {"FOOT", "FOOT"}, {"BREAST", "BREAST"},
    {"AORTA", "AORTA"}, {"CAROTID", "CAROTID ARTERIES"}, {"WHOLEBODY", "WHOLE BODY"}, {"THYROID", "THYROID"},
    {"SCROTUM", "SCROTUM"}, {"BLADDER", "BLADDER"}, {"ESOPHAGUS", "ESOPHAGUS"}, {"COLON", "COLON"},
    {"SKULL", "SKULL"}, {"RIBS", "RIBS"}, {"SACRUM", "SACRUM AND COCCYX"}, {"TMJ", "TEMPOROMANDIBULAR JOINTS"},
    {"IAC", "INTERNAL AUDITORY CANALS"}, {"PITUITARY", "PITUITARY"}};

struct Variant { const char* suffix; const char* text; };
const Variant kVariants[] = {
    {"WO", "WITHOUT CONTRAST"}, {"W", "WITH CONTRAST"}, {"WWO", "WITH AND WITHOUT CONTRAST"},
    {"LTD", "LIMITED"}, {"CMP", "COMPLETE"}, {"1V", "1 VIEW"}, {"2V", "2 VIEWS"}, {"3V", "3 VIEWS"},
    {"BIL", "BILATERAL"}, {"LT", "LEFT"}, {"RT", "RIGHT"}, {"ANG", "ANGIOGRAPHY"}, {"PERF", "PERFUSION"},
    {"FU", "FOLLOW UP"}, {"PED", "PEDIATRIC"}, {"BX", "GUIDED BIOPSY"}, {"DRN", "GUIDED DRAINAGE"},
    {"INJ", "GUIDED INJECTION"}, {"3D", "3D RECONSTRUCTION"}, {"SCR", "SCREENING"}, {"DX", "DIAGNOSTIC"},
    {"STR", "STRESS"}, {"RST", "REST"}, {"DYN", "DYNAMIC"}, {"QNT", "QUANTITATIVE"}, {"SPC", "SPECIAL VIEWS"},
    {"PORT", "PORTABLE"}, {"OR", "INTRAOPERATIVE"}, {"TRM", "TRAUMA PROTOCOL"}, {"ONC", "ONCOLOGY PROTOCOL"},
    {"LOW", "LOW DOSE"}, {"HR", "HIGH RESOLUTION"}, {"CINE", "CINE"}, {"DWI", "DIFFUSION"}, {"ELA", "ELASTOGRAPHY"},
    {"FLEX", "FLEXION AND EXTENSION"}, {"WB", "WEIGHT BEARING"}, {"STD", "STANDARD PROTOCOL"},
    {"RES", "RESEARCH PROTOCOL"}, {"SED", "UNDER SEDATION"}, {"ANES", "UNDER ANESTHESIA"}, {"CMPR", "COMPARISON"},
    {"PRE", "PREOPERATIVE"}, {"POST", "POSTOPERATIVE"}, {"URG", "URGENT READ"}, {"NEO", "NEONATAL"},
    {"ELD", "GERIATRIC"}, {"OBE", "BARIATRIC"}};

const char* const kLastNames[] = {
    "Abbott", "Alvarez", "Baker", "Barnes", "Bennett", "Brooks", "Carter", "Chen", "Coleman", "Cooper", "Diaz",
    "Edwards", "Evans", "Fischer", "Foster", "Garcia", "Gonzales", "Gray", "Hall", "Harris", "Hayes", "Hughes",
    "Jensen", "Kelly", "Kim", "Lambert", "Lopez", "Martin", "Meyer", "Mitchell", "Morgan", "Nguyen", "Ortiz",
    "Patel", "Perry", "Powell", "Reed", "Russell", "Sanders", "Schmidt", "Singh", "Sullivan", "Turner", "Vogel",
    "Walker", "Ward", "Watson", "Wong", "Young", "Zimmerman"};
const char* const kFirstNames[] = {
    "Aaron", "Alice", "Andrew", "Anna", "Benjamin", "Carla", "Daniel", "Diana", "Edward", "Elena", "Frank",
    "Grace", "Henry", "Irene", "James", "Julia", "Kevin", "Laura", "Michael", "Nadia", "Oliver", "Paula",
    "Robert", "Sarah", "Thomas", "Ursula", "Victor", "Wendy"};
struct City { const char* name; const char* state; const char* zip; };
const City kCities[] = {{"Springfield", "IL", "62701"}, {"Madison", "WI", "53703"}, {"Columbus", "OH", "43215"},
                        {"Albany", "NY", "12207"}, {"Salem", "OR", "97301"}, {"Austin", "TX", "78701"},
                        {"Denver", "CO", "80202"}, {"Raleigh", "NC", "27601"}};
const char* const kStreets[] = {"Main St", "Oak Ave", "Maple Dr", "Hospital Rd", "Medical Center Blvd",
                                "Park Lane", "River Rd", "Elm St"};

template <class T, size_t N>
constexpr size_t Count(const T (&)[N])
{
    return N;
}

// A small deterministic sequence: the catalogue must be the same on every site built from a seed.
struct Sequence
{
    std::uint64_t state;
    size_t Below(size_t n)
    {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<size_t>((state >> 33) % n);
    }
};

void SeedExamCodes(ArchiveDb& db, KeyGenerator& keys, int count)
{
    auto& st = db.Prepare("INSERT INTO exam_codes(exam_code_key, code, description, modality, body_part) "
                          "VALUES (?, ?, ?, ?, ?)");
    int written = 0;
    // Variants outermost: a smaller catalogue still covers every modality and body part.
    for (const auto& v : kVariants)
        for (const auto& m : kModalities)
            for (const auto& b : kBodyParts) {
                if (written >= count)
                    return;
                st.bind(1, keys.Next());
                st.bind(2, std::string(m.code) + b.code + v.suffix);
                st.bind(3, std::string(m.name) + " " + b.name + " " + v.text);
                st.bind(4, m.code);
                st.bind(5, b.code);
                db.Write(st);
                ++written;
            }
}

void SeedProviders(ArchiveDb& db, KeyGenerator& keys, int count, Sequence& seq)
{
    auto& st = db.Prepare(
        "INSERT INTO providers(provider_key, org_key, provider_id, provider_type, last_name, first_name, title, "
        "address1, city, state_code, postal_code, country_code, phone, email) "
        "VALUES (?, '', ?, 4, ?, ?, 'Dr.', ?, ?, ?, ?, 'US', ?, ?)");
    for (int i = 0; i < count; ++i) {
        const City& city = kCities[seq.Below(Count(kCities))];
        char id[16];
        std::snprintf(id, sizeof id, "REF%05d", i + 1);
        char phone[32];
        std::snprintf(phone, sizeof phone, "(555) %03d-%04d", static_cast<int>(200 + seq.Below(700)),
                      static_cast<int>(seq.Below(10000)));
        st.bind(1, keys.Next());
        st.bind(2, id);
        st.bind(3, kLastNames[seq.Below(Count(kLastNames))]);
        st.bind(4, kFirstNames[seq.Below(Count(kFirstNames))]);
        st.bind(5, std::to_string(100 + seq.Below(9800)) + " " + kStreets[seq.Below(Count(kStreets))]);
        st.bind(6, city.name);
        st.bind(7, city.state);
        st.bind(8, city.zip);
        st.bind(9, phone);
        st.bind(10, std::string("ref.") + id + "@example.org");
        db.Write(st);
    }
}

void SeedPlaces(ArchiveDb& db, KeyGenerator& keys)
{
    auto& loc = db.Prepare("INSERT INTO locations(location_key, location_id, description) VALUES (?, ?, ?)");
    for (int floor = 1; floor <= 6; ++floor)
        for (const char* wing : {"N", "S", "E", "W"}) {
            loc.bind(1, keys.Next());
            loc.bind(2, "W" + std::to_string(floor) + wing);
            loc.bind(3, "Ward " + std::to_string(floor) + " " + wing);
            db.Write(loc);
        }
    auto& res = db.Prepare("INSERT INTO performing_resources(resource_key, resource_id, description, modality) "
                           "VALUES (?, ?, ?, ?)");
    for (const auto& m : kModalities)
        for (int room = 3; room <= 5; ++room) {
            res.bind(1, keys.Next());
            res.bind(2, std::string(m.code) + std::to_string(room));
            res.bind(3, std::string(m.name) + " Room " + std::to_string(room));
            res.bind(4, m.code);
            db.Write(res);
        }
}

} // namespace

void SeedReferenceVolume(ArchiveDb& db, KeyGenerator& keys, const ReferenceVolume& volume)
{
    Sequence seq{0x5eedULL};
    SeedExamCodes(db, keys, volume.examCodes);
    SeedProviders(db, keys, volume.providers, seq);
    SeedPlaces(db, keys);
}
