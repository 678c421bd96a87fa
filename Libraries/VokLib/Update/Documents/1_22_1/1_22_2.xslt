<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.22.1 to 1.22.2: only additions. -->
<xsl:stylesheet version="1.0" exclude-result-prefixes="from"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:from="http://qel.example/ns/qeli/1_22_1/qeli"
    xmlns="http://qel.example/ns/qeli/1_22_2/qeli">
  <xsl:include href="../Shared/OneVersionOnly.xslt"/>

  <!-- Behind another stage that says so, the program may do without this one. -->
  <onlyRenames xmlns="http://qel.example/ns/qeli/update"
      from="http://qel.example/ns/qeli/1_22_1/qeli" to="http://qel.example/ns/qeli/1_22_2/qeli"/>

  <xsl:template match="/">
    <xsl:call-template name="refuseOtherVersions">
      <xsl:with-param name="expected" select="'http://qel.example/ns/qeli/1_22_1/qeli'"/>
    </xsl:call-template>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="/from:QEL">
    <QEL xsi:schemaLocation="http://qel.example/ns/qeli/1_22_2/qeli http://qel.example/ns/qeli/1_22_2/qeli.xsd">
      <xsl:copy-of select="@*[local-name() != 'schemaLocation']"/>
      <xsl:apply-templates/>
    </QEL>
  </xsl:template>

  <xsl:template match="from:*">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>
</xsl:stylesheet>
