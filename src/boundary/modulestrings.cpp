#include "boundary/modulestrings.h"

#include "boundary/resource.h"

#include "stringtable.h"

#include <QtGlobal>

void AddModuleStrings(StringTable& table)
{
    // Texts are compared verbatim by users' scripts and by the host: keep
    // every blank and punctuation mark as it stands.
    table.Add({
        // --- boundary
        {IDS_OK, QT_TRANSLATE_NOOP("Bravik", "OK")},
        {IDS_CANCEL, QT_TRANSLATE_NOOP("Bravik", "Cancel")},
        {IDS_SELECTED_PATIENT_INFO, QT_TRANSLATE_NOOP("Bravik", "Selected Patient Information")},
        {IDS_ACCESSION_PREFIX, QT_TRANSLATE_NOOP("Bravik", "Accession #: ")},
        {IDS_MRN_PREFIX, QT_TRANSLATE_NOOP("Bravik", "MRN: ")},
        {IDS_ERR_PATIENT_ACCESS,
         QT_TRANSLATE_NOOP("Bravik", "Error accessing patient data: The patient data might have been deleted or merged.")},
        {IDS_ERR_EXAM_ACCESS, QT_TRANSLATE_NOOP("Bravik", "Error accessing exam data: The exam data might have been deleted.")},
        {IDS_UNLINK_PATIENT_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to remove the current link for the patient?")},

        // --- exam
        {IDS_CREATE_EXAM_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Create Exam")},
        {IDS_EDIT_EXAM_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Edit Exam")},
        {IDS_TAB_INFO, QT_TRANSLATE_NOOP("Bravik", "Info")},
        {IDS_TAB_PROVIDERS, QT_TRANSLATE_NOOP("Bravik", "Providers")},
        {IDS_TAB_HISTORY, QT_TRANSLATE_NOOP("Bravik", "History")},
        {IDS_TAB_LINKS, QT_TRANSLATE_NOOP("Bravik", "Links")},
        {IDS_NOT_AVAILABLE, QT_TRANSLATE_NOOP("Bravik", "N/A")},
        {IDS_ERR_CREATE_EXAM, QT_TRANSLATE_NOOP("Bravik", "Error creating exam with Accession Number %s.  Reason: %s")},
        {IDS_ERR_UPDATE_EXAM, QT_TRANSLATE_NOOP("Bravik", "Error updating exam with Accession Number %s.  Reason: %s")},
        {IDS_ACC_EXCEEDS_LIMIT, QT_TRANSLATE_NOOP("Bravik", "Exceeds max limit of 16 characters.")},
        {IDS_ACC_EMPTY, QT_TRANSLATE_NOOP("Bravik", "Accession number cannot be empty.")},
        {IDS_PRIORITY_EMPTY, QT_TRANSLATE_NOOP("Bravik", "Exam Priority cannot be empty.")},
        {IDS_EXAM_CODE_EMPTY, QT_TRANSLATE_NOOP("Bravik", "Exam Code cannot be empty")},
        {IDS_ERR_GENERATE_ACC, QT_TRANSLATE_NOOP("Bravik", "Error generating accession number.")},
        {IDS_NOT_PERFORMED, QT_TRANSLATE_NOOP("Bravik", "Not performed")},
        {IDS_LBL_ORGANIZATION, QT_TRANSLATE_NOOP("Bravik", "Organization:")},
        {IDS_LBL_PRIORITY, QT_TRANSLATE_NOOP("Bravik", "Exam Priority:")},
        {IDS_LBL_ACCESSION, QT_TRANSLATE_NOOP("Bravik", "Accession #:")},
        {IDS_LBL_STATUS, QT_TRANSLATE_NOOP("Bravik", "Exam Status:")},
        {IDS_LBL_SCHEDULED, QT_TRANSLATE_NOOP("Bravik", "Scheduled Date/Time:")},
        {IDS_LBL_PERFORMED, QT_TRANSLATE_NOOP("Bravik", "Performed Date/Time:")},
        {IDS_LBL_EXAM_CODE, QT_TRANSLATE_NOOP("Bravik", "Exam Code:")},
        {IDS_LBL_MODALITY, QT_TRANSLATE_NOOP("Bravik", "Modality:")},
        {IDS_LBL_DESCRIPTION, QT_TRANSLATE_NOOP("Bravik", "Description:")},
        {IDS_LBL_BODY_PART, QT_TRANSLATE_NOOP("Bravik", "Body Part:")},
        {IDS_LBL_MODIFIER, QT_TRANSLATE_NOOP("Bravik", "Exam Code Modifier:")},
        {IDS_LBL_RESOURCE, QT_TRANSLATE_NOOP("Bravik", "Performing Resource:")},
        {IDS_LBL_LOCATION, QT_TRANSLATE_NOOP("Bravik", "Ordering Location:")},
        {IDS_GENERATE, QT_TRANSLATE_NOOP("Bravik", "Generate")},
        {IDS_GRP_SIGNS, QT_TRANSLATE_NOOP("Bravik", "Signs and Symptoms")},
        {IDS_GRP_HISTORY, QT_TRANSLATE_NOOP("Bravik", "History")},
        {IDS_GRP_COMMENTS, QT_TRANSLATE_NOOP("Bravik", "Comments")},
        {IDS_LBL_REFERRING, QT_TRANSLATE_NOOP("Bravik", "Referring Physician:")},
        {IDS_LBL_PROVIDER_ID, QT_TRANSLATE_NOOP("Bravik", "ID:")},
        {IDS_PROVIDER_ID_NONE, QT_TRANSLATE_NOOP("Bravik", "NA")},
        {IDS_COL_EXAM_CODE, QT_TRANSLATE_NOOP("Bravik", "Exam Code")},
        {IDS_COL_EXAM_DESCRIPTION, QT_TRANSLATE_NOOP("Bravik", "Exam Description")},
        {IDS_COL_MODALITY, QT_TRANSLATE_NOOP("Bravik", "Modality")},
        {IDS_COL_BODY_PART, QT_TRANSLATE_NOOP("Bravik", "Body Part")},
        {IDS_REMOVE_FROM_LINK, QT_TRANSLATE_NOOP("Bravik", "Remove From Link")},
        {IDS_ERR_GET_LINKED_EXAMS, QT_TRANSLATE_NOOP("Bravik", "Error getting linked exams.  Reason: %s")},
        {IDS_UNLINK_EXAM_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to remove the current link for the exam?")},
        {IDS_ERR_UNLINK_EXAM, QT_TRANSLATE_NOOP("Bravik", "Error unlinking exam with Accession Number %s.  Reason: %s")},

        // --- duplicates
        {IDS_DUP_COL_PATIENT_NAME, QT_TRANSLATE_NOOP("Bravik", "Patient Name")},
        {IDS_DUP_COL_MRN, QT_TRANSLATE_NOOP("Bravik", "MRN")},
        {IDS_DUP_COL_ORGANIZATION, QT_TRANSLATE_NOOP("Bravik", "Organization")},
        {IDS_DUP_COL_TYPE, QT_TRANSLATE_NOOP("Bravik", "Type")},
        {IDS_DUP_COL_REASON, QT_TRANSLATE_NOOP("Bravik", "Reason")},
        {IDS_DUP_COL_DOB, QT_TRANSLATE_NOOP("Bravik", "DOB")},
        {IDS_DUP_COL_SEX, QT_TRANSLATE_NOOP("Bravik", "Sex")},
        {IDS_DUP_TYPE_MERGE, QT_TRANSLATE_NOOP("Bravik", "Merge")},
        {IDS_DUP_TYPE_LINK, QT_TRANSLATE_NOOP("Bravik", "Link")},
        {IDS_DUP_ERR_ORGANIZATION, QT_TRANSLATE_NOOP("Bravik", "Invalid parameter value for 'Organization' field.")},
        {IDS_DUP_ERR_TYPE, QT_TRANSLATE_NOOP("Bravik", "Invalid parameter value for 'Type' field.")},
        {IDS_DUP_ERR_REASON,
         QT_TRANSLATE_NOOP("Bravik", "Invalid parameter / non-dictionary values for 'Reason' field.")},
        {IDS_DUP_ERR_SEX, QT_TRANSLATE_NOOP("Bravik", "Invalid parameter / non-dictionary values for 'Sex' field.")},
        {IDS_DUP_ERR_DOB, QT_TRANSLATE_NOOP("Bravik", "Invalid parameter values for 'DOB' range.")},
        {IDS_DUP_INVALID_DATE,
         QT_TRANSLATE_NOOP("Bravik", "You must spe" "cify a valid date. Check your entry to make sure it "
                                     "represents a valid date (%s).")},
        {IDS_DUP_SEARCH, QT_TRANSLATE_NOOP("Bravik", "search")},
        {IDS_DUP_RESULTS, QT_TRANSLATE_NOOP("Bravik", "Results: %d of %d")},
        {IDS_DUP_NARROW_SEARCH,
         QT_TRANSLATE_NOOP("Bravik",
                           "Additional results that match your criteria are available. Please narrow your search.")},
        {IDS_DUP_NO_CANDIDATES,
         QT_TRANSLATE_NOOP("Bravik", "No merge/link candidates found that match the current search criteria.")},
        {IDS_DUP_MENU_MERGE, QT_TRANSLATE_NOOP("Bravik", "Merge Patients")},
        {IDS_DUP_MENU_LINK, QT_TRANSLATE_NOOP("Bravik", "Link Patients")},
        {IDS_DUP_MENU_IGNORE, QT_TRANSLATE_NOOP("Bravik", "Ignore Patients")},
        {IDS_DUP_IGNORE_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to ignore the selected duplicate patient records?")},
        // Two blanks before "Reason": the texts have always read so.
        {IDS_DUP_ERR_IGNORE, QT_TRANSLATE_NOOP("Bravik", "Error ignoring duplicate patients.  Reason: %s")},
        {IDS_DUP_ERR_LINK, QT_TRANSLATE_NOOP("Bravik", "Error linking patients.  Reason: %s")},
        {IDS_DUP_ERR_MERGE, QT_TRANSLATE_NOOP("Bravik", "Error merging patients.  Reason: %s")},

        // --- mergelink
        {IDS_MERGE_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Merge Patients")},
        {IDS_MERGE_HEADER_TEXT,
         QT_TRANSLATE_NOOP("Bravik", "Carefully review the information for the two patient records you intend to merge "
                                     "and select the fields you wish to keep.")},
        {IDS_MERGE_BUTTON, QT_TRANSLATE_NOOP("Bravik", "Merge Patients")},
        {IDS_MERGE_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to merge these patients? You cannot undo a patient merge.")},
        {IDS_MERGE_NO_LINK_RIGHT,
         QT_TRANSLATE_NOOP("Bravik", "The selected merge candidates are linked to patients in other organizations.\n"
                                     "You do not have permission to link patients, please contact your administrator.")},
        {IDS_MERGE_NO_MERGE_RIGHT,
         QT_TRANSLATE_NOOP("Bravik", "The selected merge candidates are linked to patients in other organizations.\n"
                                     "You do not have permission to merge patients on all linked organizations, please "
                                     "contact your administrator.")},
        {IDS_MERGE_NO_DEMOGRAPHICS_UPDATE,
         QT_TRANSLATE_NOOP("Bravik", "One or more organization is not configured to accept demographics update.\n"
                                     "Do you want to continue?")},
        {IDS_MERGE_NOTE_LABEL, QT_TRANSLATE_NOOP("Bravik", "Note:")},
        // No blank after the comma and no full stop: the note has always read so.
        {IDS_MERGE_NOTE,
         QT_TRANSLATE_NOOP("Bravik", "All other information from the patient record,whose patient identifier has been "
                                     "selected, will be retained")},
        {IDS_MERGE_NOTE_BLOCKED,
         QT_TRANSLATE_NOOP("Bravik", "Organization is not configured to accept demographics update")},
        {IDS_LINK_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Link Patients")},
        {IDS_LINK_HEADER_TEXT,
         QT_TRANSLATE_NOOP("Bravik", "Please review the information for the two patient records you wish to link and "
                                     "make sure that they belong to the same person.  You can always unlink the patient "
                                     "records if you make a mistake.")},
        {IDS_LINK_BUTTON, QT_TRANSLATE_NOOP("Bravik", "Link Patients")},
        {IDS_LINK_SAME_ORGANIZATION,
         QT_TRANSLATE_NOOP("Bravik", "You cannot link these patients because of the potential to link patients in the "
                                     "same organization.")},
        {IDS_ML_PATIENT_RECORD_1, QT_TRANSLATE_NOOP("Bravik", "Patient Record 1")},
        {IDS_ML_PATIENT_RECORD_2, QT_TRANSLATE_NOOP("Bravik", "Patient Record 2")},
        {IDS_ML_SELECT_ALL, QT_TRANSLATE_NOOP("Bravik", "Select All:")},
        {IDS_ML_MRN, QT_TRANSLATE_NOOP("Bravik", "MRN")},
        {IDS_ML_LAST_NAME, QT_TRANSLATE_NOOP("Bravik", "Last Name:")},
        {IDS_ML_FIRST_NAME, QT_TRANSLATE_NOOP("Bravik", "First Name:")},
        {IDS_ML_MIDDLE_NAME, QT_TRANSLATE_NOOP("Bravik", "Middle Name:")},
        {IDS_ML_SEX, QT_TRANSLATE_NOOP("Bravik", "Sex:")},
        {IDS_ML_GENDER, QT_TRANSLATE_NOOP("Bravik", "Gender:")},
        {IDS_ML_DOB, QT_TRANSLATE_NOOP("Bravik", "Date of Birth:")},
        {IDS_ML_DOD, QT_TRANSLATE_NOOP("Bravik", "Date of Death:")},
        {IDS_ML_MAIDEN_NAME, QT_TRANSLATE_NOOP("Bravik", "Mother's Maiden Name:")},
        {IDS_ML_WORK_PHONE, QT_TRANSLATE_NOOP("Bravik", "Phone Number (Work):")},
        {IDS_ML_HOME_PHONE, QT_TRANSLATE_NOOP("Bravik", "Phone Number (Home):")},
        {IDS_ML_EMAIL, QT_TRANSLATE_NOOP("Bravik", "Email Address:")},
        {IDS_ML_TITLE, QT_TRANSLATE_NOOP("Bravik", "Title:")},
        {IDS_ML_SUFFIX, QT_TRANSLATE_NOOP("Bravik", "Suffix:")},
        {IDS_ML_ALIAS_FIRST, QT_TRANSLATE_NOOP("Bravik", "Alias First Name:")},
        {IDS_ML_ALIAS_MIDDLE, QT_TRANSLATE_NOOP("Bravik", "Alias Middle Name:")},
        {IDS_ML_ALIAS_LAST, QT_TRANSLATE_NOOP("Bravik", "Alias Last Name:")},
        {IDS_ML_ADDRESS, QT_TRANSLATE_NOOP("Bravik", "Address:")},
        {IDS_ML_ORGANIZATION, QT_TRANSLATE_NOOP("Bravik", "Organization:")},
        {IDS_ML_NOT_AVAILABLE, QT_TRANSLATE_NOOP("Bravik", "N/A")},
        {IDS_ML_COL_LINKED_ORGANIZATION, QT_TRANSLATE_NOOP("Bravik", "Linked Organization")},
        {IDS_ML_COL_LINKED_RECORD_1, QT_TRANSLATE_NOOP("Bravik", "Linked Patient Record 1")},
        {IDS_ML_COL_LINKED_RECORD_2, QT_TRANSLATE_NOOP("Bravik", "Linked Patient Record 2")},

        // --- patient

        // --- exam

        // --- reasons
        {IDS_REASON_EMPTY, QT_TRANSLATE_NOOP("Bravik", "Reason cannot be empty.")},
        {IDS_DETACH_STUDY_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Detach Study")},
        {IDS_DETACH_BUTTON, QT_TRANSLATE_NOOP("Bravik", "Detach")},
        {IDS_DETACH_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to detach this study? You cannot undo this operation.")},
        {IDS_DETACH_ANNOTATION_WARNING,
         QT_TRANSLATE_NOOP("Bravik", "Previous user actions (annotations, KIN etc.) performed on these images will be "
                                     "lost. Do you want to continue?")},
        {IDS_DELETE_EXAM_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Delete Exam")},
        {IDS_CANCEL_EXAM_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Cancel Exam")},
        {IDS_DELETE_BUTTON, QT_TRANSLATE_NOOP("Bravik", "Delete")},
        {IDS_DELETE_EXAM_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to delete this exam? You cannot undo this operation.")},
        {IDS_REASON_FOR_CANCELLATION, QT_TRANSLATE_NOOP("Bravik", "Reason for Cancellation")},
        {IDS_REASON_FOR_DELETION, QT_TRANSLATE_NOOP("Bravik", "Reason for Deletion")},
        {IDS_DELETE_PATIENT_CAPTION, QT_TRANSLATE_NOOP("Bravik", "Delete Patient")},
        {IDS_DELETE_PATIENT_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Are you sure you want to delete this patient? You cannot undo this operation.")},
        // The missing blank after "archive." and the blank after the line
        // break are how users have always seen this warning.
        {IDS_PERMANENT_DELETE_CONFIRM,
         QT_TRANSLATE_NOOP("Bravik", "Deletion of this patient will result in the permanent removal of all exams, "
                                     "studies and associated patient records within the Radiology archive.You cannot "
                                     "undo this operation.\n Are you sure you want to delete this patient?")},
        {IDS_PREDEFINED_REASONS, QT_TRANSLATE_NOOP("Bravik", "Predefined Reason(s):")},
        {IDS_DELETE_STUDIES, QT_TRANSLATE_NOOP("Bravik", "Delete Studies")},
        {IDS_PERMANENT_DELETE, QT_TRANSLATE_NOOP("Bravik", "Permanent Delete")},
    });
}
