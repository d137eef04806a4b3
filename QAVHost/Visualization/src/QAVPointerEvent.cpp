#include "QAVPointerEvent.h"

const char* QAVPointerEvent::POINTER_MOVED() { return "QAVViewerPOINTER_MOVEDEvt"; }
const char* QAVPointerEvent::POINTER_PRESSED() { return "QAVViewerPOINTER_PRESSEDEvt"; }
const char* QAVPointerEvent::POINTER_RELEASED() { return "QAVViewerPOINTER_RELEASEDEvt"; }
