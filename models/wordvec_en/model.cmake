# The English word centroid model: words, not character n-grams, with an
# expansion list from general-domain GloVe vectors. Its files are committed
# under wordvec_en/ (models/scripts/train_wordvec_en.sh rebuilds them); its
# words are ASCII, so the same files serve the GBK configurations.
set(words_src ${CMAKE_CURRENT_SOURCE_DIR}/wordvec_en)
set(words_files ${words_src}/en.vocab ${words_src}/en.centroid ${words_src}/en.expand)
file(READ ${words_src}/member.xml.in words_member_template)
set(MODEL_ENCODING utf-8)
foreach(where build install)
  if(where STREQUAL "build")
    set(WORDS_DIR ${words_src})
    set(dest ${PROJECT_BINARY_DIR}/models/wordvec_en/wordvec_en.xml)
  else()
    set(WORDS_DIR .)
    set(dest ${PROJECT_BINARY_DIR}/models/install/wordvec_en/wordvec_en.xml)
  endif()
  string(CONFIGURE "${words_member_template}" WORDS_MEMBER @ONLY)
  configure_file(${words_src}/wordvec_en.xml.in ${dest} @ONLY)
endforeach()
install(FILES ${words_files} ${PROJECT_BINARY_DIR}/models/install/wordvec_en/wordvec_en.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/wordvec_en)
