// What kind of attribute of a model object an attribute modification concerns.
#ifndef QAVAttributKind_h
#define QAVAttributKind_h

enum QAVAttributKind : int {
  QAVAttributUnknown = 0,   // not told by the sender
  QAVAttributValue = 1,     // a plain value (number, string, flag)
  QAVAttributGeometry = 2,  // shape, size or bounding box
  QAVAttributPosition = 3,  // placement in space
  QAVAttributLink = 4       // a reference to another object
};

#endif
