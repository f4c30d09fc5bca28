# The word-vector centroid model: the Chinese centroid member with a builder
# that brings word similarity into the document vector. The member is taken
# from centroid/member.xml.in, so both models tokenize alike; its files are
# committed under wordvec/ (models/scripts/train_wordvec.sh rebuilds them).
# WORDVEC_KIND is the builder kind that won on the held-out lines: "expand"
# (word_expand_doc_vec_builder over zh.expand) or "vec"
# (word_vec_doc_vec_builder over zh.vec).
set(WORDVEC_KIND expand)
set(wordvec_src ${CMAKE_CURRENT_SOURCE_DIR}/wordvec)
if(WORDVEC_KIND STREQUAL "vec")
  set(wordvec_builder word_vec_doc_vec_builder)
  set(wordvec_key word_vec_file)
else()
  set(wordvec_builder word_expand_doc_vec_builder)
  set(wordvec_key word_expand_file)
endif()
set(wordvec_files ${wordvec_src}/${WORDVEC_KIND}.vocab ${wordvec_src}/${WORDVEC_KIND}.centroid
    ${wordvec_src}/zh.${WORDVEC_KIND})
string(REPLACE "<identifier>standard_doc_vec_builder</identifier>" "<identifier>${wordvec_builder}</identifier>"
  wordvec_member_template "${centroid_member_template}")
string(REPLACE "</normalize_method>"
  "</normalize_method>\n          <${wordvec_key}>@CENTROID_DIR@/zh.${WORDVEC_KIND}</${wordvec_key}>"
  wordvec_member_template "${wordvec_member_template}")
set(CENTROID_LANG ${WORDVEC_KIND})
set(CENTROID_MAX_N 3)
set(MODEL_ENCODING utf-8)
foreach(where build install)
  if(where STREQUAL "build")
    set(CENTROID_DIR ${wordvec_src})
    set(dest ${PROJECT_BINARY_DIR}/models/wordvec/wordvec_zh.xml)
  else()
    set(CENTROID_DIR .)
    set(dest ${PROJECT_BINARY_DIR}/models/install/wordvec/wordvec_zh.xml)
  endif()
  set(CENTROID_VOCAB ${CENTROID_DIR}/${WORDVEC_KIND}.vocab)
  string(CONFIGURE "${wordvec_member_template}" CENTROID_MEMBER_zh @ONLY)
  set(CENTROID_MEMBER "${CENTROID_MEMBER_zh}")
  configure_file(${wordvec_src}/wordvec.xml.in ${dest} @ONLY)
endforeach()
install(FILES ${wordvec_files} ${PROJECT_BINARY_DIR}/models/install/wordvec/wordvec_zh.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/wordvec)
