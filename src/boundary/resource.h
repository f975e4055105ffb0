#pragma once

// The module's resource ids: strings (IDS_), dialog templates (IDD_) and
// controls (IDC_). Each area owns a range so areas add ids without touching
// each other's; keep every id inside its area's range.
//
//   area        strings      templates   controls
//   boundary    1000-1999    100-199     10000-10999
//   duplicates  2000-2999    200-299     20000-20999
//   mergelink   3000-3999    300-399     30000-30999
//   patient     4000-4999    400-499     40000-40999
//   exam        5000-5999    500-599     50000-50999
//   reasons     6000-6999    600-699     60000-60999
//
// The texts themselves are in modulestrings.cpp, the templates are added in
// moduletemplates.cpp.

#include "windefs.h"

// --- boundary: creators, chrome, shared messages (1000-1999, 100-199, 10000-10999)
constexpr UINT IDS_OK = 1000;
constexpr UINT IDS_CANCEL = 1001;
constexpr UINT IDS_SELECTED_PATIENT_INFO = 1002;
constexpr UINT IDS_ACCESSION_PREFIX = 1003;
constexpr UINT IDS_MRN_PREFIX = 1004;
constexpr UINT IDS_ERR_PATIENT_ACCESS = 1010;
constexpr UINT IDS_ERR_EXAM_ACCESS = 1011;
constexpr UINT IDS_UNLINK_PATIENT_CONFIRM = 1012;

constexpr int IDC_HEADER_TAB = 10000;

// --- duplicates (2000-2999, 200-299, 20000-20999)
constexpr UINT IDS_DUP_COL_PATIENT_NAME = 2000;
constexpr UINT IDS_DUP_COL_MRN = 2001;
constexpr UINT IDS_DUP_COL_ORGANIZATION = 2002;
constexpr UINT IDS_DUP_COL_TYPE = 2003;
constexpr UINT IDS_DUP_COL_REASON = 2004;
constexpr UINT IDS_DUP_COL_DOB = 2005;
constexpr UINT IDS_DUP_COL_SEX = 2006;
constexpr UINT IDS_DUP_TYPE_MERGE = 2010;
constexpr UINT IDS_DUP_TYPE_LINK = 2011;
constexpr UINT IDS_DUP_ERR_ORGANIZATION = 2020;
constexpr UINT IDS_DUP_ERR_TYPE = 2021;
constexpr UINT IDS_DUP_ERR_REASON = 2022;
constexpr UINT IDS_DUP_ERR_SEX = 2023;
constexpr UINT IDS_DUP_ERR_DOB = 2024;
constexpr UINT IDS_DUP_INVALID_DATE = 2025;
constexpr UINT IDS_DUP_SEARCH = 2030;
constexpr UINT IDS_DUP_RESULTS = 2031;
constexpr UINT IDS_DUP_NARROW_SEARCH = 2032;
constexpr UINT IDS_DUP_NO_CANDIDATES = 2033;
constexpr UINT IDS_DUP_MENU_MERGE = 2040;
constexpr UINT IDS_DUP_MENU_LINK = 2041;
constexpr UINT IDS_DUP_MENU_IGNORE = 2042;
constexpr UINT IDS_DUP_IGNORE_CONFIRM = 2043;
constexpr UINT IDS_DUP_ERR_IGNORE = 2050;
constexpr UINT IDS_DUP_ERR_LINK = 2051;
constexpr UINT IDS_DUP_ERR_MERGE = 2052;

constexpr int IDC_DUP_LIST = 20000;
constexpr int IDC_DUP_SEARCH = 20001;
constexpr int IDC_DUP_HEADER = 20002;
constexpr int ID_DUP_MERGE_PATIENTS = 20010;
constexpr int ID_DUP_LINK_PATIENTS = 20011;
constexpr int ID_DUP_IGNORE_PATIENTS = 20012;

// --- mergelink (3000-3999, 300-399, 30000-30999)

// --- patient (4000-4999, 400-499, 40000-40999)

// --- exam (5000-5999, 500-599, 50000-50999)

// --- reasons (6000-6999, 600-699, 60000-60999)
constexpr UINT IDS_REASON_EMPTY = 6000;
constexpr UINT IDS_DETACH_STUDY_CAPTION = 6001;
constexpr UINT IDS_DETACH_BUTTON = 6002;
constexpr UINT IDS_DETACH_CONFIRM = 6003;
constexpr UINT IDS_DETACH_ANNOTATION_WARNING = 6004;
constexpr UINT IDS_DELETE_EXAM_CAPTION = 6010;
constexpr UINT IDS_CANCEL_EXAM_CAPTION = 6011;
constexpr UINT IDS_DELETE_BUTTON = 6012;
constexpr UINT IDS_DELETE_EXAM_CONFIRM = 6013;
constexpr UINT IDS_REASON_FOR_CANCELLATION = 6014;
constexpr UINT IDS_REASON_FOR_DELETION = 6015;
constexpr UINT IDS_DELETE_PATIENT_CAPTION = 6020;
constexpr UINT IDS_DELETE_PATIENT_CONFIRM = 6021;
constexpr UINT IDS_PERMANENT_DELETE_CONFIRM = 6022;
constexpr UINT IDS_PREDEFINED_REASONS = 6030;
constexpr UINT IDS_DELETE_STUDIES = 6031;
constexpr UINT IDS_PERMANENT_DELETE = 6032;

constexpr UINT IDD_EXAMDELETEPARAM = 600;
constexpr UINT IDD_REASONPARAM_FRAME = 601;

constexpr int IDC_PREDEFINED_REASONS_LABEL = 60000;
constexpr int IDC_REASON_LIST = 60001;
constexpr int IDC_REASON_NOTE = 60002;
constexpr int IDC_DELETE_STUDIES = 60003;
constexpr int IDC_PERMANENT_DELETE = 60004;
constexpr int IDC_REASON_EDIT = 60005;
